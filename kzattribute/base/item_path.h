// AItemPath: the path of an entry in a hierarchy, a value.
//
//     AItemPath path(_T("Solid/RGB Color/red"));
//     path.getSegmentCount() == 3; path.getSegment(1, text) gives "RGB Color"; path.removeFirstSegment()
//
// A path is a text whose segments are joined by a separator. It has one segment more than separators;
// segments may be empty, and none can hold the separator: there is no escape. It serves wherever a
// string is expected.
#pragma once

#include "kzutil/astring.h"

class AItemPath : public AString {
public:
    static constexpr WCHAR kSeparator = WCHAR('/');

    AItemPath() = default;
    AItemPath(const AString& text) : AString(text) {}
    AItemPath(const WCHAR* text) : AString(text) {}

    WCHAR getSeparator() const { return m_separator; }
    void setSeparator(WCHAR separator) { m_separator = separator; }

    // Appends the separator and the segment. Also to an empty path: "x" appended to "" gives
    // "/x", whose first segment is empty.
    void appendSegment(const AString& segment);

    // Drops the first segment and the separator behind it; without a separator the path becomes empty.
    // Otherwise the separator is "/" afterwards, whatever it was: the rest is a path made anew.
    void removeFirstSegment();

    // Copies a segment, counted from 0. A negative index gives the first one, one behind the last
    // an empty text.
    void getSegment(int index, AString& out) const;

    // At least 1: an empty path is one empty segment.
    int getSegmentCount() const;

private:
    WCHAR m_separator = kSeparator;
};

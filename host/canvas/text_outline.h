// Texts as outlines: laid out by pango (text_outline_pango.cpp) or by GDI (text_outline_windows.cpp), picked
// by the build.
//
//     ATextOutline text = outlineText("Harbour", {"sans-serif", 12, 400, false});
//     canvas.fill(text.path(), AAffine::translation(x, baseline), paint, EFillRule::nonZero);
//
// A letter's outline is kept once, however many texts have it.
#pragma once

#include <compare>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "canvas/path.h"

struct AFont {
    std::string family;  // UTF-8: names in order of preference, separated by commas; empty: a sans-serif one
    double size = 16;    // of the em square
    int weight = 400;    // 100 to 900
    bool italic = false;
    // Where the text library can; on Windows it cannot.
    bool smallCaps = false;
    int stretch = 100;         // per cent of the usual width
    bool rightToLeft = false;  // what has no direction of its own

    // NOLINTNEXTLINE(modernize-use-nullptr): clang-tidy 14 takes the 0 of <=> for a pointer.
    friend auto operator<=>(const AFont&, const AFont&) = default;
};

// Never changes, so that any number of texts and threads may have it.
class ALetterOutline {
public:
    explicit ALetterOutline(APath path) : m_path(std::move(path)), m_bounds(m_path.bounds()) {}
    const APath& path() const { return m_path; }  // not empty
    const AFRect& bounds() const { return m_bounds; }

private:
    APath m_path;
    AFRect m_bounds;
};

struct ATextLetter {
    std::shared_ptr<const ALetterOutline> outline;
    AFPoint at;  // added to its points
};

struct ATextOutline {
    std::vector<ATextLetter> letters;  // that show something; their baseline starts at 0, 0
    double scale = 1;                  // of the letters and their places
    double advance = 0;                // where a following text would start, scaled

    // One letter, or whatever the path is.
    static ATextOutline ofPath(APath path);
    // All letters as one outline, appended.
    void appendTo(APath& path, const AAffine& transform) const;
    APath path() const;
};

// Texts in their places.
class ATextShape {
public:
    struct Line {
        std::shared_ptr<const ATextOutline> text;  // with a letter
        AAffine placed;                            // of the letters, with their scale
    };

    // Texts without letters leave no line.
    void add(std::shared_ptr<const ATextOutline> text, const AAffine& placed);
    bool empty() const { return m_lines.empty(); }
    const std::vector<Line>& lines() const { return m_lines; }

    // Of all points, control points included, transformed; nothing but zeros when there are none.
    AFRect bounds(const AAffine& transform) const;
    void appendTo(APath& path, const AAffine& transform) const;

private:
    std::vector<Line> m_lines;
};

// A letter with its marks, or several letters that are one in the font. Shaped as a part of the whole text, so that
// letters join and keep their distances; on Windows each is shaped by itself.
struct ATextCluster {
    std::size_t begin = 0, end = 0;  // bytes of the text
    ATextOutline outline;            // from 0, 0
};
struct ATextClusters {
    std::vector<ATextCluster> list;  // in the order of the text
    bool rightToLeft = false;        // all of it runs to the left
};
ATextClusters outlineClusters(std::string_view text, const AFont& font);

// Heights above the base line, of a font of that size.
struct AFontMetrics {
    double ascent = 0, descent = 0;  // the latter positive below
    double xHeight = 0;
    double superscript = 0, subscript = 0;  // where their base lines lie; the latter positive below
    double underline = 0, lineThrough = 0;  // the middle of the line
    double underlineThickness = 0, lineThroughThickness = 0;
};
AFontMetrics fontMetrics(const AFont& font);

// One line of UTF-8 text; a character that no font has shows as the library shows it. Empty without text,
// with a size that is not positive, and for bytes that are not UTF-8.
ATextOutline outlineText(std::string_view text, const AFont& font);

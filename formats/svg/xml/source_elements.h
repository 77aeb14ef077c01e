// Where the elements of a drawing's text begin and end, and who refers to whom: what writing a drawing back
// needs to know. One pass over a text that the XML library has accepted.
//
//     const SourceElements source(text);
//     const SourceElement& one = source.elements[source.find(object.getSourceIndex())];
//     text.substr(one.begin, one.end - one.begin);   // <rect …/>
#pragma once

#include <cstdint>
#include <string_view>
#include <vector>

#include "formats/svg/values/text_map.h"
#include "formats/svg/xml/tag_scan.h"
#include "formats/svg/xml/vocabulary.h"

namespace svg {

constexpr std::uint32_t kNoElement = UINT32_MAX;

// Offsets into the text, and numbers of elements in document order.
struct SourceElement {
    std::uint32_t begin = 0;    // its "<"
    std::uint32_t content = 0;  // behind the ">" of its start tag
    std::uint32_t end = 0;      // behind its end tag
    std::uint32_t parent = kNoElement;
    std::uint32_t next = 0;  // the first element that is not inside it
    Element kind = Element::unknown;
    std::string_view id;
};

// "#id" in an attribute: href, or url(#id).
struct SourceReference {
    std::uint32_t element = 0;
    bool isLink = false;  // href
    std::string_view id;
};

// What stands before the ":" of an element's name, that included; often nothing.
std::string_view prefixOf(std::string_view text, const SourceElement& element);

struct SourceElements {
    explicit SourceElements(std::string_view drawing);

    // The number of the element of a source index (the offset of its name); kNoElement when there is none.
    std::uint32_t find(std::uint32_t sourceIndex) const;

    std::string_view text;
    std::vector<SourceElement> elements;
    std::vector<SourceReference> references;  // in document order
    TextSet sheetIds;                         // what follows a "#" in style sheets: ids, and colours
};

}  // namespace svg

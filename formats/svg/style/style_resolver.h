// The cascade: presentation attributes, then the style sheet, then the style attribute; important ones last.
//
//     AttributeSet attributes;
//     attributes.read(node);
//     Style room;
//     const Style& style = resolver.compute(node, attributes, {parent, width, height}, room);
#pragma once

#include <vector>

#include "formats/svg/style/attributes.h"
#include "formats/svg/style/sheet.h"

namespace svg {

class StyleResolver {
public:
    explicit StyleResolver(Vocabulary vocabulary)
        : m_vocabulary(vocabulary), m_attributes(propertiesOf(vocabulary)), m_sheet(vocabulary) {}

    StyleSheet& sheet() { return m_sheet; }

    // The computed style of an element: put into `room`, or the parent's own when the element changes
    // nothing, as most do. `reading`: the style around it, which is not `room`.
    const Style& compute(pugi::xml_node element, const AttributeSet& attributes, const Reading& reading,
                         Style& room);
    // The same as a value.
    Style compute(pugi::xml_node element, const AttributeSet& attributes, const Reading& reading) {
        Style room;
        return compute(element, attributes, reading, room);
    }

private:
    Vocabulary m_vocabulary;
    std::uint64_t m_attributes;  // presentation attributes that are looked at
    StyleSheet m_sheet;
    std::vector<const Declaration*> m_fromSheet;  // scratch
};

// The text of a style element; empty when it is in another language than CSS.
std::string styleText(pugi::xml_node style);

}  // namespace svg

// The cascade: presentation attributes, then the style sheet, then the style attribute; important ones last.
#pragma once

#include <vector>

#include "formats/svg/style/sheet.h"
#include "formats/svg/style/style.h"

namespace svg {

class StyleResolver {
public:
    StyleSheet& sheet() { return m_sheet; }

    // The computed style of an element inside one of the style `parent`: put into `room`, or the parent's own
    // when the element changes nothing, as most do.
    const Style& compute(pugi::xml_node element, const AttributeSet& attributes, const Style& parent,
                         Style& room);
    // The same as a value.
    Style compute(pugi::xml_node element, const AttributeSet& attributes, const Style& parent) {
        Style room;
        return compute(element, attributes, parent, room);
    }

private:
    StyleSheet m_sheet;
    std::vector<const Declaration*> m_fromSheet;  // scratch
};

// The text of a style element; empty when it is in another language than CSS.
std::string styleText(pugi::xml_node style);

}  // namespace svg

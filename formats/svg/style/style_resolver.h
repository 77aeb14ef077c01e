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
    void apply(const Declaration& declaration, const Reading& reading, Style& style);
    void applyBesideTable(const Declaration& declaration, Style& style);
    bool applyGeometry(Property property, std::string_view value, Style& style);
    void applyWaiting(const Reading& reading, Style& style);

    // A property whose value refers to custom ones, all of which are known when the cascade is over.
    struct Waiting {
        Property property;
        std::string_view value;
    };

    Vocabulary m_vocabulary;
    std::uint64_t m_attributes;  // presentation attributes that are looked at
    StyleSheet m_sheet;
    Variables m_variables;
    std::vector<const Declaration*> m_fromSheet;  // scratch
    std::vector<Waiting> m_waiting;               // scratch
};

// The text of a style element; empty when it is in another language than CSS, or for other media.
std::string styleText(pugi::xml_node style);

}  // namespace svg

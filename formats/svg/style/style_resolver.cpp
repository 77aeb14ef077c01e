#include "formats/svg/style/style_resolver.h"

#include <bit>

#include "formats/svg/values/text_scan.h"

namespace svg {

const Style& StyleResolver::compute(pugi::xml_node element, const AttributeSet& attributes,
                                    const Style& parent, Style& room) {
    m_fromSheet.clear();
    if (!m_sheet.isEmpty()) {
        m_sheet.collect(element, attributes.get(Attribute::id), attributes.get(Attribute::class_),
                        m_fromSheet);
    }
    if (m_fromSheet.empty() && attributes.presentation() == 0 && !attributes.has(Attribute::style) &&
        parent.isInheritedWhole()) {
        return parent;
    }
    Style& style = room;
    style = parent;
    if (!parent.isInheritedWhole()) style = parent.inherited();
    for (std::uint64_t rest = attributes.presentation(); rest != 0; rest &= rest - 1) {
        const Property property = static_cast<Property>(std::countr_zero(rest));
        applyProperty(style, parent, property, attributes.get(presentationAttribute(property)));
    }
    cascade(m_fromSheet, attributes.get(Attribute::style), Vocabulary::import,
            [&](const Declaration& one) { applyDeclaration(style, parent, one); });
    return style;
}

std::string styleText(pugi::xml_node style) {
    const std::string_view type = trim(style.attribute("type").value());
    if (!type.empty() && !equalsNoCase(type, "text/css")) return {};
    std::string text;
    for (const pugi::xml_node part : style.children()) text += part.value();
    return text;
}

}  // namespace svg

#include "formats/svg/style_resolver.h"

#include <bit>

#include "formats/svg/text_scan.h"

namespace svg {

Style StyleResolver::compute(pugi::xml_node element, const AttributeSet& attributes, const Style& parent) {
    Style style = parent.inherited();
    for (std::uint64_t rest = attributes.presentation(); rest != 0; rest &= rest - 1) {
        const Property property = static_cast<Property>(std::countr_zero(rest));
        applyProperty(style, parent, property, attributes.get(presentationAttribute(property)));
    }
    bool important = false;
    if (!m_sheet.isEmpty()) {
        m_fromSheet.clear();
        m_sheet.collect(element, attributes.get(Attribute::id), attributes.get(Attribute::class_),
                        m_fromSheet);
        for (const Declaration& declaration : m_fromSheet) {
            important |= declaration.important;
            if (!declaration.important) applyProperty(style, parent, declaration.property, declaration.value);
        }
    }
    const std::string_view own = attributes.get(Attribute::style);
    bool ownImportant = false;
    Declaration declaration;
    for (std::string_view text = own; takeDeclaration(text, declaration);) {
        ownImportant |= declaration.important;
        if (!declaration.important) applyProperty(style, parent, declaration.property, declaration.value);
    }
    if (important) {
        for (const Declaration& one : m_fromSheet) {
            if (one.important) applyProperty(style, parent, one.property, one.value);
        }
    }
    if (ownImportant) {
        for (std::string_view text = own; takeDeclaration(text, declaration);) {
            if (declaration.important) applyProperty(style, parent, declaration.property, declaration.value);
        }
    }
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

#include "formats/svg/style/style_resolver.h"

#include <bit>

#include "formats/svg/values/text_scan.h"

namespace svg {

const Style& StyleResolver::compute(pugi::xml_node element, const AttributeSet& attributes,
                                    const Reading& reading, Style& room) {
    m_fromSheet.clear();
    if (!m_sheet.isEmpty()) {
        m_sheet.collect(element, attributes.get(Attribute::id), attributes.get(Attribute::class_),
                        m_fromSheet);
    }
    std::uint64_t presentation = attributes.presentation() & m_attributes;
    if (m_fromSheet.empty() && presentation == 0 && !attributes.has(Attribute::style) &&
        !reading.parent.hasOwn) {
        return reading.parent;
    }
    room.inheritFrom(reading.parent);
    for (; presentation != 0; presentation &= presentation - 1) {
        const auto property = static_cast<Property>(std::countr_zero(presentation));
        applyProperty(room, reading, property, attributes.presentation(property));
    }
    cascade(m_fromSheet, attributes.get(Attribute::style), m_vocabulary,
            [&](const Declaration& one) { applyDeclaration(room, reading, one); });
    return room;
}

std::string styleText(pugi::xml_node style) {
    const std::string_view type = trim(style.attribute("type").value());
    if (!type.empty() && !equalsNoCase(type, "text/css")) return {};
    std::string text;
    for (const pugi::xml_node part : style.children()) text += part.value();
    return text;
}

}  // namespace svg

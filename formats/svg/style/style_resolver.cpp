#include "formats/svg/style/style_resolver.h"

#include <bit>

#include "formats/svg/style/conditions.h"
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
        const std::string_view value = attributes.presentation(property);
        if (!applyProperty(room, reading, property, value) && hasVariable(value))
            m_waiting.push_back({property, value});
    }
    cascade(m_fromSheet, attributes.get(Attribute::style), m_vocabulary,
            [&](const Declaration& one) { apply(one, reading, room); });
    if (!m_waiting.empty()) applyWaiting(reading, room);
    return room;
}

void StyleResolver::apply(const Declaration& one, const Reading& reading, Style& style) {
    const auto forget = [&] {
        if (!m_waiting.empty())
            std::erase_if(m_waiting, [&](const Waiting& other) { return other.property == one.property; });
    };
    if (isBesideTable(one.property)) {
        applyBesideTable(one, style);
    } else if (applyDeclaration(style, reading, one)) {
        forget();
    } else if (hasVariable(one.value)) {
        forget();
        m_waiting.push_back({one.property, one.value});
    }
}

void StyleResolver::applyBesideTable(const Declaration& one, Style& style) {
    if (one.property == kVariable) {
        style.variables = m_variables.declare(one.name, one.value, style.variables);
    } else if (hasVariable(one.value)) {
        m_waiting.push_back({one.property, one.value});
    } else {
        applyGeometry(one.property, one.value, style);
    }
}

bool StyleResolver::applyGeometry(Property property, std::string_view value, Style& style) {
    std::string_view text;
    if (!readGeometry(property, value, text)) return false;
    // Attributes have terminated texts, as those that are kept for variables.
    const std::optional<std::string_view> kept = m_variables.substitute(text, style.variables);
    if (!kept) return false;
    style.own.geometry = m_variables.declare(geometryName(property), *kept, style.own.geometry);
    style.hasOwn = true;
    return true;
}

void StyleResolver::applyWaiting(const Reading& reading, Style& style) {
    for (const Waiting& one : m_waiting) {
        const std::optional<std::string_view> value = m_variables.substitute(one.value, style.variables);
        if (isBesideTable(one.property)) {
            if (value) applyGeometry(one.property, *value, style);
        } else if (!value || !applyProperty(style, reading, one.property, *value))
            resetProperty(style, reading, one.property);
    }
    m_waiting.clear();
}

std::string styleText(pugi::xml_node style) {
    const std::string_view type = trim(style.attribute("type").value());
    if (!type.empty() && !equalsNoCase(type, "text/css")) return {};
    if (!matchesMedia(style.attribute("media").value())) return {};
    std::string text;
    for (const pugi::xml_node part : style.children()) text += part.value();
    return text;
}

}  // namespace svg

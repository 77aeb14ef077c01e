#include "formats/svg/draw/context/draw_attributes.h"

namespace svg {

namespace {

// Shorthands are no attributes, nor is how an element blends: both are for styles only.
bool isAttribute(Property property) {
    return property != Property::unknown && property != Property::font && property != Property::marker &&
           property != Property::mixBlendMode && property != Property::isolation;
}

}  // namespace

void DrawAttributes::read(pugi::xml_node element) {
    m_plain.clear();
    m_present = 0;
    for (pugi::xml_attribute attribute = element.first_attribute();; attribute = attribute.next_attribute()) {
        const char* const name = attribute.name();
        if (*name == '\0') return;
        if (m_plain.addPlain(name, attribute.value())) continue;
        const QualifiedName parts = splitName(name);
        if (!parts.prefix.empty()) {
            // Both "href" and "xlink:href": the plain one counts, wherever it stands.
            const bool isHref = parts.local == "href" && !m_plain.has(Attribute::href);
            if (isHref) m_plain.addPlain("href", attribute.value());
            continue;
        }
        const Property property = findProperty(parts.local, Vocabulary::drawing);
        if (!isAttribute(property)) continue;
        m_present |= std::uint64_t{1} << static_cast<int>(property);
        m_values[static_cast<std::size_t>(property)] = attribute.value();
    }
}

}  // namespace svg

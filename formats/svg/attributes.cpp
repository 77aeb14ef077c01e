#include "formats/svg/attributes.h"

#include <cstring>

namespace svg {

Namespace Namespaces::ofElement(std::string_view prefix) const {
    for (std::size_t i = m_bindings.size(); i-- > 0;) {
        if (m_bindings[i].prefix == prefix) return m_bindings[i].space;
    }
    return prefix.empty() ? Namespace::svg : Namespace::other;
}

Namespace Namespaces::ofAttribute(std::string_view prefix) const {
    return prefix.empty() ? Namespace::none : ofElement(prefix);
}

void Namespaces::declare(std::string_view prefix, std::string_view uri) {
    if (m_bindings.size() < kMostBindings) m_bindings.push_back({prefix, findNamespace(uri)});
}

Element elementOf(pugi::xml_node node, const Namespaces& namespaces) {
    const QualifiedName name = splitName(node.name());
    const Element element = findElement(name.local);
    if (element == Element::unknown || namespaces.ofElement(name.prefix) == Namespace::svg) return element;
    return Element::unknown;
}

void AttributeSet::read(pugi::xml_node element, Namespaces& namespaces) {
    // A declaration holds for the attributes before it too, so an element that has one is read again.
    const std::size_t before = namespaces.size();
    readAll(element, namespaces, true);
    if (namespaces.size() != before) readAll(element, namespaces, false);
}

void AttributeSet::readAll(pugi::xml_node element, Namespaces& namespaces, bool declare) {
    m_present = 0;
    for (pugi::xml_attribute attribute = element.first_attribute(); attribute;
         attribute = attribute.next_attribute()) {
        const char* const text = attribute.name();
        const QualifiedName name = splitName(text);
        if (text[0] == 'x' && std::strncmp(text, "xmlns", 5) == 0 && (text[5] == ':' || text[5] == '\0')) {
            if (declare) namespaces.declare(text[5] == ':' ? text + 6 : "", attribute.value());
            continue;
        }
        const Namespace space = namespaces.ofAttribute(name.prefix);
        const Attribute known = findAttribute(space, name.local);
        if (known == Attribute::unknown) continue;
        // Both "href" and "xlink:href": the plain one counts.
        if (space == Namespace::xlink && has(known)) continue;
        m_present |= std::uint64_t{1} << static_cast<int>(known);
        m_values[static_cast<std::size_t>(known)] = attribute.value();
    }
}

}  // namespace svg

#include "formats/svg/xml/attributes.h"

#include <cstring>

namespace svg {

Namespace Namespaces::find(std::string_view prefix) const {
    for (std::size_t i = m_bindings.size(); i-- > 0;) {
        if (m_bindings[i].prefix == prefix) return m_bindings[i].space;
    }
    return prefix.empty() ? Namespace::svg : Namespace::other;
}

Namespace Namespaces::ofAttribute(std::string_view prefix) const {
    return prefix.empty() ? Namespace::none : find(prefix);
}

void Namespaces::declare(std::string_view prefix, std::string_view uri) {
    if (m_bindings.size() < kMostBindings) m_bindings.push_back({prefix, findNamespace(uri)});
    m_default = find({});
}

void Namespaces::cut(std::size_t size) {
    m_bindings.resize(size);
    m_default = find({});
}

bool isDrawing(pugi::xml_node node, const Namespaces& namespaces) {
    const char* const name = node.name();
    const char* const colon = std::strchr(name, ':');
    const std::string_view prefix(name, colon != nullptr ? static_cast<std::size_t>(colon - name) : 0);
    return namespaces.ofElement(prefix) == Namespace::svg;
}

Element elementOf(pugi::xml_node node, const Namespaces& namespaces) {
    const Element element = kindOf(node);
    return element != Element::unknown && isDrawing(node, namespaces) ? element : Element::unknown;
}

void AttributeSet::read(pugi::xml_node element, Namespaces& namespaces) {
    // A declaration holds for the attributes before it too, so an element that has one is read again.
    const std::size_t before = namespaces.size();
    readAll(element, namespaces, true);
    if (namespaces.size() != before) readAll(element, namespaces, false);
}

// The XML library lies behind calls, so each attribute costs as few of them as possible: the name that is
// missing behind the last attribute ends the walk.
void AttributeSet::readAll(pugi::xml_node element, Namespaces& namespaces, bool declare) {
    m_present = 0;
    for (pugi::xml_attribute attribute = element.first_attribute();; attribute = attribute.next_attribute()) {
        const char* const name = attribute.name();
        if (*name == '\0') return;
        const Attribute known = findPlainAttribute(name);
        if (known != Attribute::unknown) {
            set(known, attribute.value());
        } else if (std::strchr(name, ':') != nullptr || std::strcmp(name, "xmlns") == 0) {
            addQualified(name, attribute.value(), namespaces, declare);
        }
    }
}

void AttributeSet::addQualified(const char* text, const char* value, Namespaces& namespaces, bool declare) {
    const QualifiedName name = splitName(text);
    if (name.prefix == "xmlns" || (name.prefix.empty() && name.local == "xmlns")) {
        if (declare) namespaces.declare(name.prefix.empty() ? "" : name.local, value);
        return;
    }
    const Namespace space = namespaces.ofAttribute(name.prefix);
    const Attribute known = findAttribute(space, name.local);
    // Both "href" and "xlink:href": the plain one counts.
    if (known == Attribute::unknown || (space == Namespace::xlink && has(known))) return;
    set(known, value);
}

}  // namespace svg

#include "formats/svg/xml/namespaces.h"

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

}  // namespace svg

// Qualified names, and the namespace prefixes in force.
#pragma once

#include <string_view>
#include <vector>

#include <pugixml.hpp>

#include "formats/svg/xml/vocabulary.h"

namespace svg {

// Declarations are scoped: remember size() before an element's content and call shrink() behind it.
class Namespaces {
public:
    // The namespace of an element's prefix. Without any declaration in force plain elements count as SVG, so
    // that drawings that forget to declare it are read.
    Namespace ofElement(std::string_view prefix) const { return prefix.empty() ? m_default : find(prefix); }
    Namespace ofAttribute(std::string_view prefix) const;

    void declare(std::string_view prefix, std::string_view uri);
    std::size_t size() const { return m_bindings.size(); }
    void shrink(std::size_t size) {
        if (size != m_bindings.size()) cut(size);
    }

private:
    struct Binding {
        std::string_view prefix;
        Namespace space;
    };
    // More declarations in force at once than any program writes: further ones are not looked at.
    static constexpr std::size_t kMostBindings = 256;

    void cut(std::size_t size);
    Namespace find(std::string_view prefix) const;

    std::vector<Binding> m_bindings;
    Namespace m_default = Namespace::svg;  // of elements without a prefix, which is nearly every one
};

// The parts of a qualified name.
struct QualifiedName {
    std::string_view prefix;
    std::string_view local;
};
inline QualifiedName splitName(const char* name) {
    const char* colon = nullptr;
    const char* end = name;
    for (; *end != '\0'; ++end) {
        if (*end == ':' && colon == nullptr) colon = end;
    }
    if (colon == nullptr) return {{}, {name, static_cast<std::size_t>(end - name)}};
    return {{name, static_cast<std::size_t>(colon - name)},
            {colon + 1, static_cast<std::size_t>(end - colon - 1)}};
}

// The element's kind by its local name alone.
inline Element kindOf(pugi::xml_node node) {
    return kindOfName(node.name());
}

// Whether the element's name is of the namespace of drawings.
bool isDrawing(pugi::xml_node node, const Namespaces& namespaces);

// The element's kind; elements of other namespaces are unknown.
Element elementOf(pugi::xml_node node, const Namespaces& namespaces);

}  // namespace svg

// The attributes of one element, read once, and the namespace prefixes in force.
#pragma once

#include <array>
#include <cstdint>
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

class AttributeSet {
public:
    // Reads all attributes; declarations of namespaces among them are added first.
    void read(pugi::xml_node element, Namespaces& namespaces);

    // For readers of their own: starts empty, takes an attribute without a prefix. The texts are kept by
    // address. False when the name is unknown.
    void clear() { m_present = 0; }
    bool addPlain(const char* name, const char* value) {
        const Attribute known = findPlainAttribute(name);
        if (known == Attribute::unknown) return false;
        set(known, value);
        return true;
    }

    bool has(Attribute attribute) const { return (m_present >> static_cast<int>(attribute) & 1) != 0; }
    // The text of an attribute, empty when it is not there.
    std::string_view get(Attribute attribute) const {
        return has(attribute) ? std::string_view(m_values[static_cast<std::size_t>(attribute)])
                              : std::string_view();
    }
    // The presentation attributes that are there: bit n is Property n.
    std::uint64_t presentation() const {
        constexpr int kFirst = static_cast<int>(Attribute::fill);
        constexpr int kEnd = static_cast<int>(Attribute::stopColor) + 1;
        return m_present >> kFirst & ((std::uint64_t{1} << (kEnd - kFirst)) - 1);
    }

private:
    static constexpr std::size_t kCount = static_cast<std::size_t>(Attribute::count);

    void readAll(pugi::xml_node element, Namespaces& namespaces, bool declare);
    void addQualified(const char* name, const char* value, Namespaces& namespaces, bool declare);
    void set(Attribute attribute, const char* value) {
        m_present |= std::uint64_t{1} << static_cast<int>(attribute);
        m_values[static_cast<std::size_t>(attribute)] = value;
    }

    static_assert(kCount <= 64);
    std::uint64_t m_present = 0;               // one bit each
    std::array<const char*, kCount> m_values;  // valid where present
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

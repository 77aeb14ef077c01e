// Custom properties: values with a name ("--accent: teal") that inherit, and others refer to by var().
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_set>

#include "formats/svg/values/text_map.h"

namespace svg {

// The values in force at an element, the innermost first; null: none.
struct Variable {
    std::string_view name;
    std::string_view value;
    const Variable* outer;
};

// Whether a value refers to a custom property.
bool hasVariable(std::string_view value);

// Keeps the values of one drawing, each once however many elements have it.
class Variables {
public:
    // The values of `outer` and one more. The texts are kept by address.
    const Variable* declare(std::string_view name, std::string_view value, const Variable* outer);

    // The value with what its references stand for; it stays as long as this. Nothing when one stands for
    // nothing, refers to itself, or makes the value longer than any program writes.
    std::optional<std::string_view> substitute(std::string_view value, const Variable* inForce);

private:
    bool append(std::string_view value, const Variable* inForce, int depth, std::string& out);

    struct Hash {
        std::size_t operator()(const Variable& one) const;
    };
    struct Equal {
        bool operator()(const Variable& a, const Variable& b) const;
    };
    std::unordered_set<Variable, Hash, Equal> m_declared;
    std::unordered_set<std::string, TextHash, std::equal_to<>> m_texts;
    std::size_t m_bytes = 0;  // of m_texts
};

}  // namespace svg

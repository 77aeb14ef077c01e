// Selectors of author style sheets: compounds of type, class and id, joined by descendant and child ones.
//
//     Selector selector;
//     parseSelector("g.wall > rect", selector);     // true
//     parseSelector("rect:hover", selector);        // false: what cannot be told from a file is left out
#pragma once

#include <cstdint>
#include <string_view>
#include <vector>

#include <pugixml.hpp>

namespace svg {

struct Compound {
    std::string_view type;  // empty: any
    std::vector<std::string_view> ids;
    std::vector<std::string_view> classes;
    bool childOfNext = false;  // ">" stands between this compound and the one to its left
};

struct Selector {
    std::vector<Compound> compounds;  // from right to left: the subject comes first
    std::uint32_t specificity = 0;    // ids, classes, types: ten bits each
};

bool parseSelector(std::string_view text, Selector& selector);

bool matches(const Selector& selector, pugi::xml_node element);

}  // namespace svg

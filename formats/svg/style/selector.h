// Selectors of author style sheets, matched against the tree of a drawing.
//
//     Selector selector;
//     parseSelector("g.wall > rect:not([fill])", selector);   // true
//     parseSelector("rect:hover", selector);                  // true, and matches nothing: nobody points
//     parseSelector("rect:unheard-of", selector);             // false
#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include <pugixml.hpp>

namespace svg {

struct Selector;

// "[name]", "[name=value]", "[name~=value i]", …
struct AttributeTest {
    std::string name;           // local
    bool anyNamespace = false;  // a prefix was given
    char operation = '\0';      // '=', or what stands before it; '\0': the attribute is there
    std::string value;
    bool ignoresCase = false;
};

struct PseudoClass {
    enum class Kind : std::uint8_t {
        never,  // what cannot be told from a file: hover, visited, …
        root,
        empty,
        link,
        language,
        nthChild,
        nthLastChild,
        nthOfType,
        nthLastOfType,
        is,  // and where
        isNot,
    };
    Kind kind = Kind::never;
    int step = 0, offset = 0;  // of nth-…: the places step * n + offset
    std::string language;
    std::vector<Selector> selectors;  // of is and not
};

enum class Combinator : std::uint8_t { descendant, child, nextSibling, laterSibling };

struct Compound {
    std::string type;  // empty: any
    std::vector<std::string> ids;
    std::vector<std::string> classes;
    std::vector<AttributeTest> attributes;
    std::vector<PseudoClass> pseudoClasses;
    Combinator combinator = Combinator::descendant;  // between this compound and the one to its left
};

struct Selector {
    std::vector<Compound> compounds;  // from right to left: the subject comes first
    std::uint32_t specificity = 0;    // ids; classes, attributes, pseudo-classes; types: ten bits each
};

// False for what is no selector, or longer than any program writes.
bool parseSelector(std::string_view text, Selector& selector);
// The same for a list; false when one of its selectors is none.
bool parseSelectors(std::string_view text, std::vector<Selector>& selectors);

// `steps` grows by what the answer cost.
bool matches(const Selector& selector, pugi::xml_node element, std::size_t& steps);

}  // namespace svg

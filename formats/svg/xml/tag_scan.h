// Finds the tags of a drawing's text and their attributes, where there is no tree: before the XML library has
// read it, and for changes to the text itself.
//
//     std::size_t at = behindName(text, begin);                  // of <rect id="a" …>
//     for (SourceAttribute one; takeAttribute(text, at, one);) use(one.name, one.value);
#pragma once

#include <cstddef>
#include <string_view>

namespace svg {

// The offset behind the next `wanted`; the end of the text when there is none.
std::size_t behind(std::string_view text, std::size_t from, std::string_view wanted);

// Behind the comment, processing instruction or CDATA section that starts at `at`; `at` when none does.
std::size_t skipOpaque(std::string_view text, std::size_t at);

// The next of two characters outside quoted texts; the end of the text when there is none.
std::size_t findUnquoted(std::string_view text, std::size_t from, char wanted, char other);

// The offset behind the name of the element that begins at `begin`.
std::size_t behindName(std::string_view text, std::size_t begin);

// An attribute in a start tag; both views lie in the text.
struct SourceAttribute {
    std::string_view name;
    std::string_view value;  // as written, entities included
};
// Takes the next attribute of a start tag from `at`, an offset behind the tag's name. False at the end.
bool takeAttribute(std::string_view text, std::size_t& at, SourceAttribute& attribute);

}  // namespace svg

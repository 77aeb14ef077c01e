#include "formats/svg/xml/tag_scan.h"

#include <algorithm>
#include <array>

#include "formats/svg/values/text_scan.h"

namespace svg {

namespace {

// Tags are scanned by the hundred thousand: one look at a table for a character.
constexpr auto kEndsName = [] {
    std::array<bool, 256> table{};
    for (const char c : {' ', '\t', '\n', '\r', '\f', '=', '/', '>', '\0'})
        table[static_cast<unsigned char>(c)] = true;
    return table;
}();

bool endsName(char c) {
    return kEndsName[static_cast<unsigned char>(c)];
}

}  // namespace

std::size_t behind(std::string_view text, std::size_t from, std::string_view wanted) {
    const std::size_t found = text.find(wanted, from);
    return found == text.npos ? text.size() : found + wanted.size();
}

std::size_t skipOpaque(std::string_view text, std::size_t at) {
    const std::string_view rest = text.substr(at);
    if (rest.starts_with("<!--")) return behind(text, at + 4, "-->");
    if (rest.starts_with("<?")) return behind(text, at + 2, "?>");
    if (rest.starts_with("<![CDATA[")) return behind(text, at + 9, "]]>");
    return at;
}

std::size_t findUnquoted(std::string_view text, std::size_t from, char wanted, char other) {
    for (std::size_t at = from; at < text.size(); ++at) {
        const char c = text[at];
        if (c == wanted || c == other) return at;
        if (c == '"' || c == '\'') at = std::min(text.find(c, at + 1), text.size());
    }
    return text.size();
}

std::size_t behindName(std::string_view text, std::size_t begin) {
    std::size_t at = begin + 1;
    while (at < text.size() && !endsName(text[at])) ++at;
    return at;
}

bool takeAttribute(std::string_view text, std::size_t& at, SourceAttribute& attribute) {
    const char* const begin = text.data();
    const char* const end = begin + text.size();
    const char* one = begin + at;
    while (one != end && isSpace(*one)) ++one;
    const char* const name = one;
    while (one != end && !endsName(*one)) ++one;
    if (one == name || one == end) return false;
    attribute.name = {name, static_cast<std::size_t>(one - name)};
    while (one != end && (*one == '=' || isSpace(*one))) ++one;
    if (one == end || (*one != '"' && *one != '\'')) return false;
    const char quote = *one;
    const char* const value = ++one;  // most are too short for a call
    while (one != end && *one != quote) ++one;
    attribute.value = {value, static_cast<std::size_t>(one - value)};
    at = static_cast<std::size_t>(one - begin) + (one != end ? 1 : 0);
    return true;
}

}  // namespace svg

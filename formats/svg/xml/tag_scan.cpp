#include "formats/svg/xml/tag_scan.h"

#include <algorithm>

#include "formats/svg/values/text_scan.h"

namespace svg {

namespace {

constexpr bool endsName(char c) {
    return isSpace(c) || c == '=' || c == '/' || c == '>';
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

std::size_t findUnquoted(std::string_view text, std::size_t from, std::string_view wanted) {
    for (std::size_t at = from; at < text.size(); ++at) {
        if (wanted.find(text[at]) != wanted.npos) return at;
        if (text[at] == '"' || text[at] == '\'') at = std::min(text.find(text[at], at + 1), text.size());
    }
    return text.size();
}

std::size_t behindName(std::string_view text, std::size_t begin) {
    std::size_t at = begin + 1;
    while (at < text.size() && !endsName(text[at])) ++at;
    return at;
}

bool takeAttribute(std::string_view text, std::size_t& at, SourceAttribute& attribute) {
    while (at < text.size() && isSpace(text[at])) ++at;
    if (at >= text.size() || text[at] == '>' || text[at] == '/') return false;
    const std::size_t name = at;
    while (at < text.size() && !endsName(text[at])) ++at;
    attribute.name = text.substr(name, at - name);
    while (at < text.size() && (isSpace(text[at]) || text[at] == '=')) ++at;
    if (at >= text.size() || (text[at] != '"' && text[at] != '\'')) return false;
    const std::size_t value = at + 1;
    const std::size_t close = std::min(text.find(text[at], value), text.size());
    attribute.value = text.substr(value, close - value);
    at = std::min(close + 1, text.size());
    return true;
}

}  // namespace svg

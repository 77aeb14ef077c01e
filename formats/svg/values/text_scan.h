// Small helpers for reading the values of attributes and style sheets.
#pragma once

#include <string_view>

namespace svg {

constexpr bool isSpace(char c) {
    return c == ' ' || c == '\t' || c == '\n' || c == '\r' || c == '\f';
}
constexpr bool isDigit(char c) {
    return c >= '0' && c <= '9';
}
constexpr char toLower(char c) {
    return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
}

constexpr std::string_view trimFront(std::string_view text) {
    while (!text.empty() && isSpace(text.front())) text.remove_prefix(1);
    return text;
}

constexpr std::string_view trim(std::string_view text) {
    text = trimFront(text);
    while (!text.empty() && isSpace(text.back())) text.remove_suffix(1);
    return text;
}

// `lower` is written in lower case; the letters A to Z of `text` count as small ones.
constexpr bool equalsNoCase(std::string_view text, std::string_view lower) {
    if (text.size() != lower.size()) return false;
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (toLower(text[i]) != lower[i]) return false;
    }
    return true;
}

constexpr bool startsWithNoCase(std::string_view text, std::string_view lower) {
    return text.size() >= lower.size() && equalsNoCase(text.substr(0, lower.size()), lower);
}

// Skips white space and at most one comma, the separator of number lists.
constexpr std::string_view skipSeparator(std::string_view text) {
    text = trimFront(text);
    if (!text.empty() && text.front() == ',') text = trimFront(text.substr(1));
    return text;
}

// Takes the next word of a list separated by white space; empty at the end.
constexpr std::string_view takeWord(std::string_view& text) {
    text = trimFront(text);
    std::size_t length = 0;
    while (length < text.size() && !isSpace(text[length])) ++length;
    const std::string_view word = text.substr(0, length);
    text.remove_prefix(length);
    return word;
}

// The id in "#id"; empty for references to other files and for anything else.
constexpr std::string_view localReference(std::string_view href) {
    href = trim(href);
    return href.size() > 1 && href.front() == '#' ? href.substr(1) : std::string_view();
}

}  // namespace svg

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

// The length of what stands before white space or a comma; parentheses are kept together.
constexpr std::size_t componentLength(std::string_view text) {
    int depth = 0;
    for (std::size_t i = 0; i < text.size(); ++i) {
        const char c = text[i];
        if (depth <= 0 && (isSpace(c) || c == ',')) return i;
        depth += c == '(' ? 1 : c == ')' ? -1 : 0;
    }
    return text.size();
}

// Takes the next component of a value separated by white space, "calc(1px + 2px)" in one; empty at the end and before
// a comma.
constexpr std::string_view takeComponent(std::string_view& text) {
    text = trimFront(text);
    const std::string_view component = text.substr(0, componentLength(text));
    text.remove_prefix(component.size());
    return component;
}

// Where an argument of a function ends: at the first comma outside parentheses and quotes, or with the text.
constexpr std::size_t argumentLength(std::string_view text) {
    int depth = 0;
    char quote = 0;
    for (std::size_t i = 0; i < text.size(); ++i) {
        const char c = text[i];
        if (quote != 0) {
            if (c == quote) quote = 0;
        } else if (c == '"' || c == '\'') {
            quote = c;
        } else if (c == ',' && depth <= 0) {
            return i;
        } else {
            depth += c == '(' ? 1 : c == ')' ? -1 : 0;
        }
    }
    return text.size();
}

// Takes an argument with the comma behind it. `more`: whether there was one.
constexpr std::string_view takeArgument(std::string_view& text, bool& more) {
    const std::size_t length = argumentLength(text);
    const std::string_view argument = trim(text.substr(0, length));
    more = length < text.size();
    text.remove_prefix(more ? length + 1 : length);
    return argument;
}

// The parenthesis that closes the one at `open`; npos when there is none.
constexpr std::size_t closingParenthesis(std::string_view text, std::size_t open) {
    if (open == text.npos) return text.npos;
    int depth = 0;
    for (std::size_t i = open; i < text.size(); ++i) {
        depth += text[i] == '(' ? 1 : text[i] == ')' ? -1 : 0;
        if (depth == 0) return i;
    }
    return text.npos;
}

// The id in "#id"; empty for references to other files and for anything else.
constexpr std::string_view localReference(std::string_view href) {
    href = trim(href);
    return href.size() > 1 && href.front() == '#' ? href.substr(1) : std::string_view();
}

}  // namespace svg

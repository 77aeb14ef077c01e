#include "app/script/words.h"

#include <algorithm>

namespace app {

namespace {

bool isBlank(char c) {
    return c == ' ' || c == '\t' || c == '\r' || c == '\n' || c == '\v' || c == '\f';
}

}  // namespace

bool splitWords(std::string_view line, std::vector<std::string>& words, std::string& error) {
    words.clear();
    // For the system a name would end there, and another file be read or written.
    if (line.find('\0') != line.npos) {
        error = "the line holds a NUL character";
        return false;
    }
    std::string word;
    bool inWord = false;
    char quote = 0;
    for (std::size_t i = 0; i < line.size(); ++i) {
        const char c = line[i];
        if (quote != 0) {
            // Within double quotes a backslash is special only before what it can protect there.
            const char next = i + 1 < line.size() ? line[i + 1] : '\0';
            if (c == quote)
                quote = 0;
            else if (quote == '"' && c == '\\' && (next == '"' || next == '\\' || next == '$' || next == '`'))
                word += line[++i];
            else
                word += c;
        } else if (isBlank(c)) {
            if (inWord) words.push_back(std::move(word));
            word.clear();
            inWord = false;
        } else if (c == '#' && !inWord) {
            break;
        } else {
            inWord = true;
            if (c == '\'' || c == '"') {
                quote = c;
            } else if (c == '\\') {
                if (i + 1 == line.size()) {
                    error = "a backslash at the end of the line";
                    return false;
                }
                word += line[++i];
            } else {
                word += c;
            }
        }
    }
    if (quote != 0) {
        error = quote == '"' ? "a double quote is not closed" : "a single quote is not closed";
        return false;
    }
    if (inWord) words.push_back(std::move(word));
    return true;
}

namespace {

constexpr std::string_view kPlainMarks = "_.:+/,@%=-";

bool isPlain(const std::string& word) {
    return !word.empty() && std::ranges::all_of(word, [](char c) {
        return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9') ||
               kPlainMarks.find(c) != kPlainMarks.npos;
    });
}

std::string quoted(const std::string& word) {
    if (isPlain(word)) return word;
    if (word.find('\'') == word.npos) return '\'' + word + '\'';
    std::string text = "\"";
    for (const char c : word) {
        if (c == '"' || c == '\\') text += '\\';
        text += c;
    }
    return text + '"';
}

}  // namespace

std::string joinWords(const std::vector<std::string>& words) {
    std::string line;
    for (const std::string& word : words) line += (line.empty() ? "" : " ") + quoted(word);
    return line;
}

}  // namespace app

#include "formats/svg/style/declaration.h"

#include <array>

#include "formats/svg/values/text_scan.h"

namespace svg {

namespace {

enum CharacterClass : std::uint8_t { ordinary, semicolon, quotation, opening, closing, slash };

constexpr auto kCharacters = [] {
    std::array<std::uint8_t, 256> table{};
    table[';'] = semicolon;
    table['"'] = table['\''] = quotation;
    table['('] = opening;
    table[')'] = closing;
    table['/'] = slash;
    return table;
}();

// Behind the comment that starts here, or else behind this character.
std::size_t behindComment(std::string_view text, std::size_t at) {
    if (text.substr(at, 2) != "/*") return at + 1;
    const std::size_t close = text.find("*/", at + 2);
    return close == text.npos ? text.size() : close + 2;
}

// The length of a declaration: up to a semicolon outside quotes and parentheses.
std::size_t declarationLength(std::string_view text) {
    int depth = 0;
    const auto kindAt = [text](std::size_t i) { return kCharacters[static_cast<unsigned char>(text[i])]; };
    for (std::size_t i = 0; i < text.size(); ++i) {
        while (kindAt(i) == ordinary) {
            if (++i == text.size()) return i;
        }
        switch (kindAt(i)) {
            case semicolon:
                if (depth <= 0) return i;
                break;
            case quotation:
                i = text.find(text[i], i + 1);
                if (i == text.npos) return text.size();
                break;
            case opening:
                ++depth;
                break;
            case closing:
                --depth;
                break;
            case slash:
                i = behindComment(text, i) - 1;
                break;
            default:
                break;
        }
    }
    return text.size();
}

// White space and comments at both ends do not belong to a value. Its first and last character tell, nearly always,
// that there is no comment.
std::string_view trimComments(std::string_view text) {
    text = trim(text);
    while (!text.empty() && text.front() == '/' && text.starts_with("/*"))
        text = trim(text.substr(behindComment(text, 0)));
    while (!text.empty() && text.back() == '/' && text.ends_with("*/")) {
        const std::size_t open = text.rfind("/*");
        if (open == text.npos) break;
        text = trim(text.substr(0, open));
    }
    return text;
}

bool takeImportant(std::string_view& value) {
    if (value.empty() || toLower(value.back()) != 't') return false;
    const std::size_t mark = value.rfind('!');
    if (mark == value.npos || !equalsNoCase(trim(value.substr(mark + 1)), "important")) return false;
    value = trim(value.substr(0, mark));
    return true;
}

// Names are written in small letters, nearly always.
Property propertyNamed(std::string_view name, Vocabulary vocabulary) {
    const Property property = findProperty(name, vocabulary);
    char lower[32];
    if (property != kUnknownProperty || name.empty() || name.size() > sizeof lower ||
        toLower(name[0]) == name[0]) {
        return property;
    }
    for (std::size_t i = 0; i < name.size(); ++i) lower[i] = toLower(name[i]);
    return findProperty({lower, name.size()}, vocabulary);
}

}  // namespace

void prepare(Declaration& declaration) {
    if (isBesideTable(declaration.property)) return;
    declaration.paintMember = paintMember(declaration.property);
    // No paint is written like the words that copy a property.
    if (declaration.paintMember && !parsePaint(declaration.value, declaration.paint))
        declaration.paintMember = nullptr;
}

bool applyDeclaration(Style& style, const Reading& reading, const Declaration& declaration) {
    if (!declaration.paintMember)
        return applyProperty(style, reading, declaration.property, declaration.value);
    style.*declaration.paintMember = declaration.paint;
    return true;
}

bool takeDeclaration(std::string_view& text, Declaration& declaration, Vocabulary vocabulary) {
    while (!text.empty()) {
        std::size_t colon = 0;
        while (colon < text.size() && text[colon] != ':' && text[colon] != ';') {
            colon = text[colon] == '/' ? behindComment(text, colon) : colon + 1;
        }
        const std::size_t length = colon + declarationLength(text.substr(colon));
        const std::string_view whole = text.substr(0, length);
        text.remove_prefix(length < text.size() ? length + 1 : length);
        if (colon == whole.size()) continue;
        declaration.name = trimComments(whole.substr(0, colon));
        const std::string_view name = declaration.name;
        declaration.property = name.size() >= 2 && name[0] == '-' && name[1] == '-'
                                   ? kVariable
                                   : propertyNamed(name, vocabulary);
        if (declaration.property == kUnknownProperty) continue;
        declaration.value = trimComments(whole.substr(colon + 1));
        declaration.important = takeImportant(declaration.value);
        return true;
    }
    return false;
}

}  // namespace svg

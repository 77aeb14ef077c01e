#include "formats/svg/style/conditions.h"

#include <algorithm>
#include <optional>

#include "formats/svg/style/properties.h"
#include "formats/svg/style/selector.h"
#include "formats/svg/values/text_scan.h"

namespace svg {

namespace {

constexpr int kDeepestCondition = 16;

// Takes the next word, or what stands in parentheses with the name before them.
std::string_view takeTerm(std::string_view& text) {
    text = trimFront(text);
    std::size_t end = 0;
    for (int depth = 0; end < text.size(); ++end) {
        const char c = text[end];
        if (depth == 0 && isSpace(c)) break;
        depth += c == '(' ? 1 : c == ')' ? -1 : 0;
        if (depth == 0 && c == ')') {
            ++end;
            break;
        }
    }
    const std::string_view term = text.substr(0, end);
    text.remove_prefix(end);
    return term;
}

std::string_view insideOf(std::string_view term) {
    const std::size_t open = term.find('(');
    return open == term.npos || !term.ends_with(')') ? std::string_view()
                                                     : trim(term.substr(open + 1, term.size() - open - 2));
}

// True, false, or nothing for what cannot be told, which makes a whole condition false.
using Answer = std::optional<bool>;

// Terms joined by "and" or "or", perhaps with "not" before them; `ask` answers one.
template <class Ask>
Answer conditionHolds(std::string_view text, int depth, Ask ask) {
    if (depth > kDeepestCondition) return {};
    bool isNot = false;
    bool isOr = false;
    Answer result;
    for (text = trim(text); !text.empty(); text = trimFront(text)) {
        const std::string_view term = takeTerm(text);
        if (equalsNoCase(term, "and") || equalsNoCase(term, "only")) continue;
        if (equalsNoCase(term, "or")) {
            isOr = true;
        } else if (equalsNoCase(term, "not")) {
            isNot = true;
        } else {
            Answer one = ask(term);
            if (!one) return {};
            if (isNot) *one = !*one;
            isNot = false;
            result = result ? (isOr ? *result || *one : *result && *one) : *one;
        }
    }
    return result;
}

Answer mediaTerm(std::string_view term, int depth) {
    if (!term.starts_with('(')) return equalsNoCase(term, "all") || equalsNoCase(term, "screen");
    const std::string_view inside = insideOf(term);
    if (inside.starts_with('(') || startsWithNoCase(inside, "not "))
        return conditionHolds(inside, depth, [&](std::string_view one) { return mediaTerm(one, depth + 1); });
    const std::size_t colon = std::min(inside.find(':'), inside.size());
    const std::string_view name = trim(inside.substr(0, colon));
    const std::string_view value = trim(inside.substr(std::min(colon + 1, inside.size())));
    if (equalsNoCase(name, "prefers-color-scheme")) return value.empty() || equalsNoCase(value, "light");
    if (equalsNoCase(name, "prefers-reduced-motion"))
        return !value.empty() && equalsNoCase(value, "no-preference");
    if (equalsNoCase(name, "color") || equalsNoCase(name, "grid")) return equalsNoCase(name, "color");
    return {};
}

Answer supportsTerm(std::string_view term, int depth) {
    const std::string_view inside = insideOf(term);
    if (startsWithNoCase(term, "selector(")) {
        Selector selector;
        return parseSelector(inside, selector);
    }
    if (!term.starts_with('(')) return false;
    if (inside.starts_with('(') || startsWithNoCase(inside, "not "))
        return conditionHolds(inside, depth,
                              [&](std::string_view one) { return supportsTerm(one, depth + 1); });
    const std::size_t colon = inside.find(':');
    if (colon == inside.npos) return false;
    const std::string_view name = trim(inside.substr(0, colon));
    if (name.starts_with("--")) return true;
    const Property property = findProperty(name, Vocabulary::drawing);
    const Style parent;
    Style style;
    const std::string_view value = trim(inside.substr(colon + 1));
    if (property == kUnknownProperty) return false;
    std::string_view text;
    return isBesideTable(property) ? readGeometry(property, value, text)
                                   : applyProperty(style, {parent}, property, value);
}

}  // namespace

bool matchesMedia(std::string_view queries) {
    if (trim(queries).empty()) return true;
    while (!queries.empty()) {
        const std::size_t comma = std::min(queries.find(','), queries.size());
        std::string_view one = trim(queries.substr(0, comma));
        bool isNot = startsWithNoCase(one, "not ");
        if (isNot) one = trimFront(one.substr(4));
        const Answer answer =
            conditionHolds(one, 0, [](std::string_view term) { return mediaTerm(term, 0); });
        if (answer && *answer != isNot) return true;
        queries.remove_prefix(std::min(comma + 1, queries.size()));
    }
    return false;
}

bool isSupported(std::string_view condition) {
    return conditionHolds(condition, 0, [](std::string_view term) { return supportsTerm(term, 0); })
        .value_or(false);
}

}  // namespace svg

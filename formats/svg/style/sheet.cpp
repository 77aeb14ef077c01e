#include "formats/svg/style/sheet.h"

#include <algorithm>

#include "formats/svg/values/text_scan.h"
#include "formats/svg/xml/namespaces.h"

namespace svg {

namespace {

constexpr int kDeepestBlock = 16;

// Blanks comments and the HTML comment marks that old drawings put around their sheets.
std::string withoutComments(std::string_view text) {
    std::string out;
    out.reserve(text.size());
    char quote = 0;
    for (std::size_t i = 0; i < text.size(); ++i) {
        const std::string_view rest = text.substr(i);
        if (quote == 0 && rest.starts_with("/*")) {
            const std::size_t end = text.find("*/", i + 2);
            if (end == text.npos) break;
            i = end + 1;
            out += ' ';
        } else if (quote == 0 && rest.starts_with("<!--")) {
            i += 3;
        } else if (quote == 0 && rest.starts_with("-->")) {
            i += 2;
        } else {
            if (quote != 0 ? text[i] == quote : (text[i] == '"' || text[i] == '\'')) {
                quote = quote != 0 ? 0 : text[i];
            }
            out += text[i];
        }
    }
    return out;
}

// The first of the characters outside quotes; npos when there is none.
std::size_t findOutsideQuotes(std::string_view text, std::size_t from, std::string_view wanted) {
    char quote = 0;
    for (std::size_t i = from; i < text.size(); ++i) {
        if (quote != 0) {
            if (text[i] == quote) quote = 0;
        } else if (wanted.find(text[i]) != wanted.npos) {
            return i;
        } else if (text[i] == '"' || text[i] == '\'') {
            quote = text[i];
        }
    }
    return text.npos;
}

// The brace that closes the block opened before `from`; the end of the text when it is missing.
std::size_t findBlockEnd(std::string_view text, std::size_t from) {
    int depth = 1;
    for (std::size_t i = from; (i = findOutsideQuotes(text, i, "{}")) != text.npos; ++i) {
        depth += text[i] == '{' ? 1 : -1;
        if (depth == 0) return i;
    }
    return text.size();
}

// Whether a media block counts: those for every medium or for screens, without further conditions.
bool isForScreens(std::string_view query) {
    while (!query.empty()) {
        const std::size_t comma = std::min(query.find(','), query.size());
        const std::string_view one = trim(query.substr(0, comma));
        if (equalsNoCase(one, "all") || equalsNoCase(one, "screen")) return true;
        query.remove_prefix(std::min(comma + 1, query.size()));
    }
    return false;
}

}  // namespace

void StyleSheet::add(std::string_view text) {
    m_texts.push_back(withoutComments(text));
    addRules(m_texts.back(), 0);
}

void StyleSheet::addRules(std::string_view text, int depth) {
    std::size_t at = 0;
    for (;;) {
        while (at < text.size() && isSpace(text[at])) ++at;
        if (at >= text.size()) return;
        const std::size_t open = findOutsideQuotes(text, at, text[at] == '@' ? "{;" : "{");
        if (open == text.npos) return;
        if (text[open] == ';') {  // @import, @charset
            at = open + 1;
            continue;
        }
        const std::size_t end = findBlockEnd(text, open + 1);
        const std::string_view head = trim(text.substr(at, open - at));
        const std::string_view body = text.substr(open + 1, end - open - 1);
        if (head.empty() || head.front() != '@') {
            addRule(head, body);
        } else if (startsWithNoCase(head, "@media") && isForScreens(head.substr(6)) &&
                   depth < kDeepestBlock) {
            addRules(body, depth + 1);
        }
        at = end + 1;
    }
}

void StyleSheet::addRule(std::string_view selectors, std::string_view body) {
    const std::size_t first = m_declarations.size();
    for (Declaration declaration; takeDeclaration(body, declaration, m_vocabulary);) {
        prepare(declaration);
        m_declarations.push_back(declaration);
    }
    if (m_declarations.size() == first) return;
    while (!selectors.empty()) {
        const std::size_t comma = std::min(findOutsideQuotes(selectors, 0, ","), selectors.size());
        Selector selector;
        if (parseSelector(selectors.substr(0, comma), selector)) {
            const Compound& subject = selector.compounds.front();
            std::vector<std::size_t>& list = !subject.ids.empty()       ? m_byId[subject.ids.front()]
                                             : !subject.classes.empty() ? m_byClass[subject.classes.front()]
                                             : !subject.type.empty()    ? m_byType[subject.type]
                                                                        : m_universal;
            list.push_back(m_rules.size());
            const std::size_t asked =
                subject.ids.size() + subject.classes.size() + (subject.type.empty() ? 0 : 1);
            const bool onlyKey = selector.compounds.size() == 1 && asked <= 1;
            m_rules.push_back({std::move(selector), first, m_declarations.size(), onlyKey});
        }
        selectors.remove_prefix(std::min(comma + 1, selectors.size()));
    }
}

void StyleSheet::collectFrom(const std::vector<std::size_t>& rules, pugi::xml_node element) {
    for (const std::size_t rule : rules) {
        if (m_rules[rule].onlyKey || matches(m_rules[rule].selector, element)) m_found.push_back(rule);
    }
}

void StyleSheet::collectFrom(const Index& index, std::string_view key, pugi::xml_node element) {
    if (const std::vector<std::size_t>* const rules = index.find(key)) collectFrom(*rules, element);
}

void StyleSheet::collect(pugi::xml_node element, std::string_view id, std::string_view classes,
                         std::vector<const Declaration*>& declarations) {
    m_found.clear();
    collectFrom(m_universal, element);
    if (!m_byType.isEmpty()) collectFrom(m_byType, splitName(element.name()).local, element);
    while (!classes.empty() && !m_byClass.isEmpty()) collectFrom(m_byClass, takeWord(classes), element);
    collectFrom(m_byId, id, element);
    if (m_found.size() > 1) {
        std::sort(m_found.begin(), m_found.end(), [this](std::size_t a, std::size_t b) {
            const std::uint32_t left = m_rules[a].selector.specificity;
            const std::uint32_t right = m_rules[b].selector.specificity;
            return left != right ? left < right : a < b;
        });
    }
    for (const std::size_t rule : m_found) {
        for (std::size_t i = m_rules[rule].firstDeclaration; i < m_rules[rule].endDeclaration; ++i) {
            declarations.push_back(&m_declarations[i]);
        }
    }
}

}  // namespace svg

#include "formats/svg/style/sheet.h"

#include <algorithm>
#include <tuple>

#include "formats/svg/style/conditions.h"
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

// Where a block starts or a statement ends: at the first of the characters outside quotes, parentheses and brackets. One
// that nothing closes takes the rest of the sheet with it.
std::size_t findHeadEnd(std::string_view text, std::size_t from, std::string_view wanted) {
    const std::string all = std::string(wanted) + "()[]";
    int depth = 0;
    for (std::size_t i = from; (i = findOutsideQuotes(text, i, all)) != text.npos; ++i) {
        if (text[i] == '(' || text[i] == '[') {
            ++depth;
        } else if (text[i] == ')' || text[i] == ']') {
            depth = std::max(0, depth - 1);
        } else if (depth == 0) {
            return i;
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

}  // namespace

void StyleSheet::add(std::string_view text) {
    m_texts.push_back(withoutComments(text));
    addRules(m_texts.back(), 0, {});
}

void StyleSheet::addRules(std::string_view text, int depth, const std::string& layer) {
    std::size_t at = 0;
    for (;;) {
        while (at < text.size() && isSpace(text[at])) ++at;
        if (at >= text.size()) return;
        const std::size_t open = findHeadEnd(text, at, text[at] == '@' ? "{;" : "{");
        if (open == text.npos) return;
        const std::string_view head = trim(text.substr(at, open - at));
        if (text[open] == ';') {  // @import, @charset, @layer
            if (startsWithNoCase(head, "@layer")) nameLayers(head.substr(6), layer);
            at = open + 1;
            continue;
        }
        const std::size_t end = findBlockEnd(text, open + 1);
        const std::string_view body = text.substr(open + 1, end - open - 1);
        if (head.empty() || head.front() != '@') {
            addRule(head, body, layer);
        } else if (depth < kDeepestBlock) {
            addBlock(head, body, depth + 1, layer);
        }
        at = end + 1;
    }
}

void StyleSheet::addBlock(std::string_view head, std::string_view body, int depth, const std::string& layer) {
    if (startsWithNoCase(head, "@media")) {
        if (matchesMedia(head.substr(6))) addRules(body, depth, layer);
    } else if (startsWithNoCase(head, "@supports")) {
        if (isSupported(head.substr(9))) addRules(body, depth, layer);
    } else if (startsWithNoCase(head, "@layer")) {
        const std::string_view name = trim(head.substr(6));
        const std::string inner =
            name.empty() ? layer + "." + std::to_string(m_layers.size()) : layer + "." + std::string(name);
        layerNumber(inner);
        addRules(body, depth, inner);
    }
}

void StyleSheet::nameLayers(std::string_view names, const std::string& around) {
    while (!names.empty()) {
        const std::size_t comma = std::min(names.find(','), names.size());
        const std::string_view name = trim(names.substr(0, comma));
        if (!name.empty()) layerNumber(around + "." + std::string(name));
        names.remove_prefix(std::min(comma + 1, names.size()));
    }
}

std::uint32_t StyleSheet::layerNumber(const std::string& layer) {
    if (layer.empty()) return 0;
    constexpr std::size_t kMostLayers = 1000;
    const auto found = std::find(m_layers.begin(), m_layers.end(), layer);
    if (found == m_layers.end() && m_layers.size() < kMostLayers) {
        m_layers.push_back(layer);
        return static_cast<std::uint32_t>(m_layers.size());
    }
    return static_cast<std::uint32_t>(found - m_layers.begin()) + 1;
}

void StyleSheet::addRule(std::string_view selectors, std::string_view body, const std::string& layer) {
    std::vector<Selector> list;
    if (!parseSelectors(selectors, list)) return;
    const std::size_t first = m_declarations.size();
    for (Declaration declaration; takeDeclaration(body, declaration, m_vocabulary);) {
        prepare(declaration);
        m_declarations.push_back(declaration);
    }
    if (m_declarations.size() == first) return;
    const auto block = static_cast<std::uint32_t>(m_blocks.size());
    m_blocks.push_back({first, m_declarations.size(), layerNumber(layer)});
    for (Selector& selector : list) {
        Rule& rule = m_rules.emplace_back();
        rule.block = block;
        rule.selector = std::move(selector);
        const Compound& subject = rule.selector.compounds.front();
        const std::size_t keys = subject.ids.size() + subject.classes.size() + (subject.type.empty() ? 0 : 1);
        rule.onlyKey = rule.selector.compounds.size() == 1 && keys == 1 && subject.attributes.empty() &&
                       subject.pseudoClasses.empty();
        Bucket& bucket = !subject.ids.empty()       ? m_byId[subject.ids.front()]
                         : !subject.classes.empty() ? m_byClass[subject.classes.front()]
                         : !subject.type.empty()    ? m_byType[subject.type]
                                                    : m_universal;
        bucket.rules.push_back(m_rules.size() - 1);
    }
}

void StyleSheet::collectFrom(Bucket& bucket, pugi::xml_node element) {
    if (bucket.lastElement == m_element) return;  // a class that is named twice
    bucket.lastElement = m_element;
    m_steps += bucket.rules.size();
    for (const std::size_t number : bucket.rules) {
        if (isSpent()) return;
        const Rule& rule = m_rules[number];
        if (rule.onlyKey || matches(rule.selector, element, m_steps)) m_found.push_back(number);
    }
}

void StyleSheet::collectFrom(Index& index, std::string_view key, pugi::xml_node element) {
    if (Bucket* const bucket = index.find(key)) collectFrom(*bucket, element);
}

// Rising weight: the cascade applies what comes later over what came before. Of the selectors of one block
// the weightiest counts.
void StyleSheet::sortFound() {
    m_steps += 8 * m_found.size();
    const auto weight = [this](std::size_t number) {
        const Rule& rule = m_rules[number];
        // What is in no layer wins over all that is in one.
        const std::uint32_t layer = m_blocks[rule.block].layer;
        return std::tuple(layer == 0 ? UINT32_MAX : layer, rule.selector.specificity, number);
    };
    std::sort(m_found.begin(), m_found.end(),
              [&](std::size_t a, std::size_t b) { return weight(a) < weight(b); });
    std::size_t kept = m_found.size();
    for (std::size_t i = m_found.size(); i-- > 0;) {
        Block& block = m_blocks[m_rules[m_found[i]].block];
        if (block.lastElement == m_element) continue;
        block.lastElement = m_element;
        m_found[--kept] = m_found[i];
    }
    m_found.erase(m_found.begin(), m_found.begin() + static_cast<std::ptrdiff_t>(kept));
}

void StyleSheet::collect(pugi::xml_node element, std::string_view id, std::string_view classes,
                         std::vector<const Declaration*>& declarations) {
    if (isSpent()) return;
    m_allowed += kStepsPerElement;
    ++m_element;
    m_found.clear();
    if (!m_universal.rules.empty()) collectFrom(m_universal, element);
    if (!m_byType.isEmpty()) collectFrom(m_byType, splitName(element.name()).local, element);
    while (!classes.empty() && !m_byClass.isEmpty()) collectFrom(m_byClass, takeWord(classes), element);
    if (!m_byId.isEmpty()) collectFrom(m_byId, id, element);
    if (m_found.size() > 1) sortFound();
    for (const std::size_t rule : m_found) {
        const Block& block = m_blocks[m_rules[rule].block];
        m_steps += block.end - block.first;
        if (isSpent()) return;
        for (std::size_t i = block.first; i < block.end; ++i) declarations.push_back(&m_declarations[i]);
    }
}

}  // namespace svg

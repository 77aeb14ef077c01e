#include "formats/svg/style/selector.h"

#include <algorithm>
#include <cstring>

#include "formats/svg/values/text_scan.h"
#include "formats/svg/values/units.h"
#include "formats/svg/values/word_table.h"
#include "formats/svg/xml/namespaces.h"

namespace svg {

namespace {

// Far beyond what programs write; matching goes as deep as a selector is long.
constexpr std::size_t kMostCompounds = 128;
constexpr int kDeepestList = 8;

using Kind = PseudoClass::Kind;

bool isNameCharacter(char c) {
    return isDigit(c) || (toLower(c) >= 'a' && toLower(c) <= 'z') || c == '-' || c == '_' ||
           static_cast<unsigned char>(c) >= 0x80;
}

bool takeCharacter(std::string_view& text, char wanted) {
    if (text.empty() || text.front() != wanted) return false;
    text.remove_prefix(1);
    return true;
}

// A name; "\" makes the next character part of it.
std::string takeName(std::string_view& text) {
    std::string name;
    while (!text.empty()) {
        if (text.front() == '\\' && text.size() > 1) {
            text.remove_prefix(1);
        } else if (!isNameCharacter(text.front())) {
            break;
        }
        name += text.front();
        text.remove_prefix(1);
    }
    return name;
}

class Parser {
public:
    explicit Parser(int depth) : m_depth(depth) {}

    bool selector(std::string_view text, Selector& out);
    // `forgiving`: one that is invalid is left out, else it makes the whole list invalid.
    bool list(std::string_view text, std::vector<Selector>& out, bool forgiving = false);

private:
    bool compound(std::string_view& text, Compound& out);
    bool attribute(std::string_view& text, AttributeTest& out);
    bool pseudoClass(std::string_view& text, Compound& out);
    bool pseudoFunction(std::string_view name, std::string_view arguments, PseudoClass& out);
    void count(const std::vector<Selector>& selectors);

    int m_depth;
    std::size_t m_counts[3] = {};  // of ids, classes, types
};

// "[" is taken already.
bool Parser::attribute(std::string_view& text, AttributeTest& out) {
    text = trimFront(text);
    if (takeCharacter(text, '*')) out.anyNamespace = true;
    out.name = takeName(text);
    if (text.size() > 1 && text[0] == '|' && text[1] != '=') {
        text.remove_prefix(1);
        out.anyNamespace = true;
        out.name = takeName(text);
    }
    text = trimFront(text);
    if (out.name.empty()) return false;
    if (takeCharacter(text, ']')) return true;
    out.operation = '=';
    if (!text.empty() && std::string_view("~|^$*").find(text.front()) != std::string_view::npos) {
        out.operation = text.front();
        text.remove_prefix(1);
    }
    if (!takeCharacter(text, '=')) return false;
    text = trimFront(text);
    if (!text.empty() && (text.front() == '"' || text.front() == '\'')) {
        const std::size_t close = text.find(text.front(), 1);
        if (close == text.npos) return false;
        out.value = text.substr(1, close - 1);
        text.remove_prefix(close + 1);
    } else {
        out.value = takeName(text);
        if (out.value.empty()) return false;
    }
    text = trimFront(text);
    if (!text.empty() && toLower(text.front()) == 'i') out.ignoresCase = true;
    if (!text.empty() && (toLower(text.front()) == 'i' || toLower(text.front()) == 's'))
        text = trimFront(text.substr(1));
    return takeCharacter(text, ']');
}

// "odd", "even", "3", "2n", "-n+3".
bool parsePlaces(std::string_view text, int& step, int& offset) {
    std::string compact;
    for (const char c : text) {
        if (!isSpace(c)) compact += toLower(c);
    }
    if (compact == "odd") compact = "2n+1";
    if (compact == "even") compact = "2n";
    const auto number = [](std::string_view digits, int& value) {
        double exact = 0;
        if (!takeNumber(digits, exact) || !digits.empty() || exact != static_cast<int>(exact)) return false;
        value = static_cast<int>(exact);
        return std::abs(exact) < 1e6;
    };
    const std::size_t n = compact.find('n');
    if (n == compact.npos) return number(compact, offset);
    const std::string before = compact.substr(0, n);
    step = before == "-" ? -1 : 1;
    if (!before.empty() && before != "-" && before != "+" && !number(before, step)) return false;
    const std::string behind = compact.substr(n + 1);
    return behind.empty() || ((behind[0] == '+' || behind[0] == '-') && number(behind, offset));
}

constexpr auto kPseudoClasses = makeWordTable<Kind>({
    {"root", Kind::root},
    {"empty", Kind::empty},
    {"link", Kind::link},
    {"any-link", Kind::link},
    {"visited", Kind::never},
    {"hover", Kind::never},
    {"active", Kind::never},
    {"focus", Kind::never},
    {"focus-visible", Kind::never},
    {"focus-within", Kind::never},
    {"target", Kind::never},
    {"checked", Kind::never},
    {"disabled", Kind::never},
    {"enabled", Kind::never},
    {"before", Kind::never},
    {"after", Kind::never},
    {"first-line", Kind::never},
    {"first-letter", Kind::never},
    {"first-child", Kind::nthChild},
    {"last-child", Kind::nthLastChild},
    {"first-of-type", Kind::nthOfType},
    {"last-of-type", Kind::nthLastOfType},
});
constexpr auto kPseudoFunctions = makeWordTable<Kind>({
    {"lang", Kind::language},
    {"nth-child", Kind::nthChild},
    {"nth-last-child", Kind::nthLastChild},
    {"nth-of-type", Kind::nthOfType},
    {"nth-last-of-type", Kind::nthLastOfType},
    {"is", Kind::is},
    {"where", Kind::is},
    {"not", Kind::isNot},
});

bool Parser::pseudoFunction(std::string_view name, std::string_view arguments, PseudoClass& out) {
    out.kind = kPseudoFunctions.find(name, Kind::root);
    switch (out.kind) {
        case Kind::root:
            return false;
        case Kind::language: {
            std::string_view language = trim(arguments);
            if (language.size() > 1 && (language.front() == '"' || language.front() == '\''))
                language = language.substr(1, language.size() - 2);
            out.language = language;
            return !language.empty();
        }
        case Kind::is:
        case Kind::isNot: {
            const bool isValid = m_depth < kDeepestList &&
                                 Parser(m_depth + 1).list(arguments, out.selectors, out.kind == Kind::is);
            if (name != "where") count(out.selectors);
            return isValid;
        }
        default:
            return parsePlaces(arguments, out.step, out.offset);
    }
}

// The most specific of a list counts.
void Parser::count(const std::vector<Selector>& selectors) {
    std::uint32_t most = 0;
    for (const Selector& one : selectors) most = std::max(most, one.specificity);
    m_counts[0] += most >> 20;
    m_counts[1] += most >> 10 & 1023;
    m_counts[2] += most & 1023;
}

// ":" is taken already.
bool Parser::pseudoClass(std::string_view& text, Compound& out) {
    PseudoClass one;
    if (takeCharacter(text, ':')) {  // a pseudo-element, which is no element of a drawing
        ++m_counts[2];
        if (takeName(text).empty()) return false;
        out.pseudoClasses.push_back(std::move(one));
        return true;
    }
    std::string name = takeName(text);
    std::transform(name.begin(), name.end(), name.begin(), toLower);
    if (takeCharacter(text, '(')) {
        std::size_t close = 0;
        for (int depth = 1; close < text.size(); ++close) {
            depth += text[close] == '(' ? 1 : text[close] == ')' ? -1 : 0;
            if (depth == 0) break;
        }
        if (close == text.size() || !pseudoFunction(name, text.substr(0, close), one)) return false;
        text.remove_prefix(close + 1);
        if (one.kind != Kind::is && one.kind != Kind::isNot) ++m_counts[1];
        out.pseudoClasses.push_back(std::move(one));
        return true;
    }
    ++m_counts[1];
    const bool isOnly = name == "only-child" || name == "only-of-type";
    if (isOnly) {  // first and last
        one.offset = 1;
        one.kind = name == "only-child" ? Kind::nthChild : Kind::nthOfType;
        out.pseudoClasses.push_back(one);
        one.kind = name == "only-child" ? Kind::nthLastChild : Kind::nthLastOfType;
    } else {
        one.kind = kPseudoClasses.find(name, Kind::language);
        one.offset = 1;
        if (one.kind == Kind::language) return false;
    }
    out.pseudoClasses.push_back(std::move(one));
    return true;
}

bool Parser::compound(std::string_view& text, Compound& out) {
    bool any = false;
    if (text.size() > 1 && text[0] == '*' && text[1] == '|') text.remove_prefix(2);
    if (takeCharacter(text, '*')) {
        any = true;
    } else if (!text.empty() && (isNameCharacter(text.front()) || text.front() == '\\')) {
        out.type = takeName(text);
        if (takeCharacter(text, '|')) out.type = takeCharacter(text, '*') ? std::string() : takeName(text);
        m_counts[2] += out.type.empty() ? 0 : 1;
        any = true;
    }
    for (; !text.empty(); any = true) {
        const char mark = text.front();
        if (mark == '.' || mark == '#') {
            text.remove_prefix(1);
            // A name does not start with a digit, unless that is escaped.
            if (!text.empty() && isDigit(text.front())) return false;
            std::string name = takeName(text);
            if (name.empty()) return false;
            ++m_counts[mark == '#' ? 0 : 1];
            (mark == '#' ? out.ids : out.classes).push_back(std::move(name));
        } else if (mark == '[') {
            text.remove_prefix(1);
            ++m_counts[1];
            if (!attribute(text, out.attributes.emplace_back())) return false;
        } else if (mark == ':') {
            text.remove_prefix(1);
            if (!pseudoClass(text, out)) return false;
        } else {
            break;
        }
    }
    return any;
}

bool Parser::selector(std::string_view text, Selector& out) {
    text = trim(text);
    Combinator combinator = Combinator::descendant;
    for (;;) {
        Compound one;
        one.combinator = combinator;
        if (out.compounds.size() == kMostCompounds || !compound(text, one)) return false;
        out.compounds.push_back(std::move(one));
        const std::string_view rest = trimFront(text);
        if (rest.empty()) break;
        const char mark = rest.front();
        const bool isMark = mark == '>' || mark == '+' || mark == '~';
        if (!isMark && rest.size() == text.size()) return false;
        combinator = mark == '>'   ? Combinator::child
                     : mark == '+' ? Combinator::nextSibling
                     : mark == '~' ? Combinator::laterSibling
                                   : Combinator::descendant;
        text = isMark ? trimFront(rest.substr(1)) : rest;
    }
    std::reverse(out.compounds.begin(), out.compounds.end());
    for (const std::size_t one : m_counts)
        out.specificity =
            out.specificity << 10 | static_cast<std::uint32_t>(std::min<std::size_t>(one, 1023));
    return true;
}

// Where a list of selectors has its next comma: outside quotes and parentheses.
std::size_t findComma(std::string_view text) {
    int depth = 0;
    for (std::size_t i = 0; i < text.size(); ++i) {
        const char c = text[i];
        if (c == '"' || c == '\'') {
            i = std::min(text.find(c, i + 1), text.size());
        } else if (c == '(' || c == '[') {
            ++depth;
        } else if (c == ')' || c == ']') {
            --depth;
        } else if (c == ',' && depth == 0) {
            return i;
        }
    }
    return text.size();
}

bool Parser::list(std::string_view text, std::vector<Selector>& out, bool forgiving) {
    for (bool more = true; more;) {
        const std::size_t comma = findComma(text);
        if (!Parser(m_depth).selector(text.substr(0, comma), out.emplace_back())) {
            if (!forgiving) return false;
            out.pop_back();
        }
        more = comma < text.size();
        text.remove_prefix(std::min(comma + 1, text.size()));
    }
    return true;
}

bool hasWord(std::string_view list, std::string_view wanted, std::size_t& steps) {
    steps += list.size() / 16;
    while (!list.empty()) {
        if (takeWord(list) == wanted) return true;
    }
    return false;
}

bool isElement(pugi::xml_node node) {
    return node.type() == pugi::node_element;
}

pugi::xml_node siblingOf(pugi::xml_node node, bool next) {
    do {
        node = next ? node.next_sibling() : node.previous_sibling();
    } while (node && !isElement(node));
    return node;
}

class Matcher {
public:
    explicit Matcher(std::size_t& steps) : m_steps(steps) {}

    bool matches(const Selector& selector, pugi::xml_node element) {
        return matchFrom(selector, 0, element) == Result::matches;
    }

private:
    // What a failure at one element says of the others that could be tried.
    enum class Result : std::uint8_t { matches, failsHere, failsForSiblings, failsForGood };

    Result matchFrom(const Selector& selector, std::size_t index, pugi::xml_node element);
    bool matchesCompound(const Compound& compound, pugi::xml_node element);
    bool matchesAttribute(const AttributeTest& test, pugi::xml_node element);
    bool matchesPseudoClass(const PseudoClass& pseudo, pugi::xml_node element);
    bool isAtPlace(const PseudoClass& pseudo, pugi::xml_node element);
    bool isInLanguage(std::string_view wanted, pugi::xml_node element);

    std::size_t& m_steps;
};

// Tries ancestors and siblings from the nearest on, and goes back only to where another try can help.
Matcher::Result Matcher::matchFrom(const Selector& selector, std::size_t index, pugi::xml_node element) {
    ++m_steps;
    if (!matchesCompound(selector.compounds[index], element)) return Result::failsHere;
    if (++index == selector.compounds.size()) return Result::matches;
    switch (selector.compounds[index - 1].combinator) {
        case Combinator::descendant:
            for (pugi::xml_node at = element.parent(); isElement(at); at = at.parent()) {
                const Result result = matchFrom(selector, index, at);
                if (result == Result::matches || result == Result::failsForGood) return result;
            }
            return Result::failsForGood;
        case Combinator::child: {
            if (!isElement(element.parent())) return Result::failsForGood;
            const Result result = matchFrom(selector, index, element.parent());
            const bool isFinal = result == Result::matches || result == Result::failsForGood;
            return isFinal ? result : Result::failsForSiblings;
        }
        case Combinator::nextSibling: {
            const pugi::xml_node before = siblingOf(element, false);
            return before ? matchFrom(selector, index, before) : Result::failsForSiblings;
        }
        case Combinator::laterSibling:
            for (pugi::xml_node at = siblingOf(element, false); at; at = siblingOf(at, false)) {
                const Result result = matchFrom(selector, index, at);
                if (result != Result::failsHere) return result;
            }
            return Result::failsForSiblings;
    }
    return Result::failsForGood;
}

bool Matcher::matchesCompound(const Compound& compound, pugi::xml_node element) {
    if (!compound.type.empty() && splitName(element.name()).local != compound.type) return false;
    if (!compound.ids.empty()) {
        const char* const id = element.attribute("id").value();
        for (const std::string& wanted : compound.ids) {
            if (wanted != id) return false;
        }
    }
    if (!compound.classes.empty()) {
        const char* const classes = element.attribute("class").value();
        for (const std::string& wanted : compound.classes) {
            if (!hasWord(classes, wanted, m_steps)) return false;
        }
    }
    for (const AttributeTest& test : compound.attributes) {
        if (!matchesAttribute(test, element)) return false;
    }
    for (const PseudoClass& pseudo : compound.pseudoClasses) {
        if (!matchesPseudoClass(pseudo, element)) return false;
    }
    return true;
}

pugi::xml_attribute findAttribute(pugi::xml_node element, const std::string& name, bool anyNamespace) {
    const pugi::xml_attribute plain = element.attribute(name.c_str());
    if (plain || !anyNamespace) return plain;
    for (const pugi::xml_attribute one : element.attributes()) {
        if (splitName(one.name()).local == name) return one;
    }
    return {};
}

bool Matcher::matchesAttribute(const AttributeTest& test, pugi::xml_node element) {
    const pugi::xml_attribute attribute = findAttribute(element, test.name, test.anyNamespace);
    if (!attribute || test.operation == '\0') return !attribute.empty();
    std::string value = attribute.value();
    std::string wanted = test.value;
    m_steps += value.size() / 16;
    if (test.ignoresCase) {
        std::transform(value.begin(), value.end(), value.begin(), toLower);
        std::transform(wanted.begin(), wanted.end(), wanted.begin(), toLower);
    }
    switch (test.operation) {
        case '~':
            return !wanted.empty() && hasWord(value, wanted, m_steps);
        case '|':
            return value == wanted || value.starts_with(wanted + '-');
        case '^':
            return !wanted.empty() && value.starts_with(wanted);
        case '$':
            return !wanted.empty() && value.ends_with(wanted);
        case '*':
            return !wanted.empty() && value.find(wanted) != value.npos;
        default:
            return value == wanted;
    }
}

bool Matcher::matchesPseudoClass(const PseudoClass& pseudo, pugi::xml_node element) {
    const auto isMatch = [&](const Selector& one) { return matches(one, element); };
    switch (pseudo.kind) {
        case Kind::never:
            return false;
        case Kind::root:
            return !isElement(element.parent());
        case Kind::empty:
            return !element.first_child();
        case Kind::link:
            return kindOf(element) == Element::a && findAttribute(element, "href", true);
        case Kind::language:
            return isInLanguage(pseudo.language, element);
        case Kind::is:
            return std::any_of(pseudo.selectors.begin(), pseudo.selectors.end(), isMatch);
        case Kind::isNot:
            return std::none_of(pseudo.selectors.begin(), pseudo.selectors.end(), isMatch);
        default:
            return isAtPlace(pseudo, element);
    }
}

bool Matcher::isAtPlace(const PseudoClass& pseudo, pugi::xml_node element) {
    const bool fromEnd = pseudo.kind == Kind::nthLastChild || pseudo.kind == Kind::nthLastOfType;
    const bool ofType = pseudo.kind == Kind::nthOfType || pseudo.kind == Kind::nthLastOfType;
    // Nothing has to be counted beyond the only place.
    const int most = pseudo.step == 0 ? pseudo.offset : 1 << 30;
    int place = 1;
    for (pugi::xml_node at = siblingOf(element, fromEnd); at && place <= most; at = siblingOf(at, fromEnd)) {
        ++m_steps;
        if (!ofType || std::strcmp(at.name(), element.name()) == 0) ++place;
    }
    const int distance = place - pseudo.offset;
    if (pseudo.step == 0) return distance == 0;
    return distance % pseudo.step == 0 && distance / pseudo.step >= 0;
}

bool Matcher::isInLanguage(std::string_view wanted, pugi::xml_node element) {
    for (pugi::xml_node at = element; isElement(at); at = at.parent()) {
        ++m_steps;
        pugi::xml_attribute language = at.attribute("xml:lang");
        if (!language) language = at.attribute("lang");
        if (!language) continue;
        const std::string_view value = language.value();
        const std::size_t size = wanted.size();
        return value.size() >= size && (value.size() == size || value[size] == '-') &&
               std::equal(wanted.begin(), wanted.end(), value.begin(),
                          [](char a, char b) { return toLower(a) == toLower(b); });
    }
    return false;
}

}  // namespace

bool parseSelector(std::string_view text, Selector& selector) {
    return Parser(0).selector(text, selector);
}

bool parseSelectors(std::string_view text, std::vector<Selector>& selectors) {
    return Parser(0).list(text, selectors);
}

bool matches(const Selector& selector, pugi::xml_node element, std::size_t& steps) {
    return Matcher(steps).matches(selector, element);
}

}  // namespace svg

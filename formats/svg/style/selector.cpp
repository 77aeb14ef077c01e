#include "formats/svg/style/selector.h"

#include <algorithm>
#include <cstring>

#include "formats/svg/values/text_scan.h"
#include "formats/svg/xml/namespaces.h"

namespace svg {

namespace {

bool isNameCharacter(char c) {
    return isDigit(c) || (toLower(c) >= 'a' && toLower(c) <= 'z') || c == '-' || c == '_' ||
           static_cast<unsigned char>(c) >= 0x80;
}

std::string_view takeName(std::string_view& text) {
    std::size_t length = 0;
    while (length < text.size() && isNameCharacter(text[length])) ++length;
    const std::string_view name = text.substr(0, length);
    text.remove_prefix(length);
    return name;
}

// Takes one compound; false when it uses what is not supported (attributes, pseudo-classes, escapes).
bool takeCompound(std::string_view& text, Compound& compound) {
    bool any = false;
    if (!text.empty() && text.front() == '*') {
        text.remove_prefix(1);
        any = true;
    } else if (!text.empty() && isNameCharacter(text.front())) {
        compound.type = takeName(text);
        any = true;
    }
    while (!text.empty() && (text.front() == '.' || text.front() == '#')) {
        auto& list = text.front() == '.' ? compound.classes : compound.ids;
        text.remove_prefix(1);
        const std::string_view name = takeName(text);
        if (name.empty()) return false;
        list.push_back(name);
        any = true;
    }
    return any;
}

bool hasClass(std::string_view list, std::string_view wanted) {
    while (!list.empty()) {
        if (takeWord(list) == wanted) return true;
    }
    return false;
}

bool matchesCompound(const Compound& compound, pugi::xml_node element) {
    if (element.type() != pugi::node_element) return false;
    if (!compound.type.empty() && splitName(element.name()).local != compound.type) return false;
    if (!compound.ids.empty()) {
        const char* const id = element.attribute("id").value();
        for (const std::string_view wanted : compound.ids) {
            if (wanted != id) return false;
        }
    }
    if (!compound.classes.empty()) {
        const char* const classes = element.attribute("class").value();
        for (const std::string_view wanted : compound.classes) {
            if (!hasClass(classes, wanted)) return false;
        }
    }
    return true;
}

// Matches compounds that child combinators join, from `index` on, against the element and its ancestors. On
// success `index` stands behind the run and `element` above it.
bool matchesRun(const Selector& selector, std::size_t& index, pugi::xml_node& element) {
    std::size_t i = index;
    pugi::xml_node at = element;
    for (;;) {
        if (!matchesCompound(selector.compounds[i], at)) return false;
        const bool more = selector.compounds[i].childOfNext;
        at = at.parent();
        ++i;
        if (!more) break;
    }
    index = i;
    element = at;
    return true;
}

}  // namespace

bool parseSelector(std::string_view text, Selector& selector) {
    text = trim(text);
    std::size_t counts[3] = {};
    bool child = false;
    for (;;) {
        Compound compound;
        compound.childOfNext = child;
        if (!takeCompound(text, compound)) return false;
        counts[0] += compound.ids.size();
        counts[1] += compound.classes.size();
        counts[2] += compound.type.empty() ? 0 : 1;
        selector.compounds.push_back(std::move(compound));
        if (text.empty()) break;
        child = false;
        const std::string_view rest = trimFront(text);
        if (rest.front() == '>') {
            child = true;
            text = trimFront(rest.substr(1));
        } else if (rest.size() != text.size()) {
            text = rest;
        } else {
            return false;
        }
    }
    std::reverse(selector.compounds.begin(), selector.compounds.end());
    // The combinator was noted at the compound on its right, which is where matching looks for it.
    for (const std::size_t count : counts) {
        selector.specificity =
            selector.specificity << 10 | static_cast<std::uint32_t>(std::min<std::size_t>(count, 1023));
    }
    return true;
}

// A run that matches at the nearest ancestor leaves the most ancestors to the others, so nothing has to be
// tried again: the time grows with depth times selector length.
bool matches(const Selector& selector, pugi::xml_node element) {
    std::size_t index = 0;
    if (!matchesRun(selector, index, element)) return false;
    while (index < selector.compounds.size()) {
        for (;; element = element.parent()) {
            if (element.type() != pugi::node_element) return false;
            if (matchesRun(selector, index, element)) break;
        }
    }
    return true;
}

}  // namespace svg

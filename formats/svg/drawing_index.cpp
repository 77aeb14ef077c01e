#include "formats/svg/drawing_index.h"

#include <algorithm>
#include <charconv>
#include <cstring>

#include "formats/svg/attributes.h"
#include "formats/svg/text_scan.h"

namespace svg {

namespace {

bool isResource(Element element) {
    return element >= Element::symbol && element <= Element::marker;
}

// Rules out the most frequent elements; the vocabulary decides about the others.
bool mayMatter(const char* name) {
    switch (name[0]) {
        case 'g':
            return name[1] != '\0';
        case 'r':
            return std::strcmp(name, "rect") != 0;
        case 'p':
            return std::strcmp(name, "path") != 0;
        case 'c':
            return std::strcmp(name, "circle") != 0;
        case 't':
            return std::strcmp(name, "text") != 0 && std::strcmp(name, "tspan") != 0;
        default:
            return true;
    }
}

const char* idOf(pugi::xml_node node) {
    for (pugi::xml_attribute attribute = node.first_attribute(); attribute;
         attribute = attribute.next_attribute()) {
        const char* const name = attribute.name();
        if (name[0] == 'i' && name[1] == 'd' && name[2] == '\0') return attribute.value();
    }
    return "";
}

}  // namespace

pugi::xml_node nextNode(pugi::xml_node node, pugi::xml_node root, int& depth, bool enterChildren) {
    if (enterChildren) {
        if (const pugi::xml_node child = node.first_child()) {
            ++depth;
            return child;
        }
    }
    while (node != root) {
        if (const pugi::xml_node sibling = node.next_sibling()) return sibling;
        node = node.parent();
        --depth;
    }
    return {};
}

bool DrawingIndex::build(pugi::xml_node root, pugi::xml_node& culprit) {
    m_root = root;
    int depth = 1;
    for (pugi::xml_node node = root; node; node = nextNode(node, root, depth)) {
        const char* const name = node.name();
        if (name[0] == '\0') continue;  // text
        ++m_elementCount;
        if (depth > kDeepestNesting) {
            culprit = node;
            return false;
        }
        const std::string_view id = idOf(node);
        if (!id.empty() && isDigit(id.back())) noteId(id);
        if (!mayMatter(name)) continue;
        const Element element = findElement(splitName(name).local);
        if (element == Element::style) m_styles.push_back(node);
        if (isResource(element) && !id.empty()) m_resources.emplace(id, node);
    }
    for (std::vector<std::uint32_t>& numbers : m_taken) std::sort(numbers.begin(), numbers.end());
    return true;
}

void DrawingIndex::noteId(std::string_view id) {
    const std::size_t dash = id.rfind('-');
    if (dash == id.npos) return;
    const std::string_view stem = id.substr(0, dash);
    const Element element = findElement(stem);
    if (element == Element::unknown && stem != "shadow") return;
    std::uint32_t number = 0;
    const char* const end = id.data() + id.size();
    const auto [rest, failure] = std::from_chars(id.data() + dash + 1, end, number);
    if (failure != std::errc() || rest != end) return;  // beyond every number that is made
    m_taken[element == Element::unknown ? kShadowStem : static_cast<std::size_t>(element)].push_back(number);
}

pugi::xml_node DrawingIndex::findResource(std::string_view id) const {
    const auto found = m_resources.find(id);
    return found == m_resources.end() ? pugi::xml_node() : found->second;
}

pugi::xml_node DrawingIndex::findAny(std::string_view id) {
    if (const pugi::xml_node resource = findResource(id)) return resource;
    if (!m_allBuilt) {
        m_allBuilt = true;
        int depth = 0;
        for (pugi::xml_node node = m_root; node; node = nextNode(node, m_root, depth)) {
            const std::string_view one = idOf(node);
            if (!one.empty()) m_all.emplace(one, node);
        }
    }
    const auto found = m_all.find(id);
    return found == m_all.end() ? pugi::xml_node() : found->second;
}

}  // namespace svg

#include "formats/svg/tree/drawing_index.h"

#include <algorithm>
#include <charconv>

#include "formats/svg/values/text_scan.h"
#include "formats/svg/xml/namespaces.h"

namespace svg {

namespace {

bool isResource(Element element) {
    return element >= Element::symbol && element <= Element::marker;
}

constexpr char kTooDeep[] = "elements are nested deeper than 1000";
constexpr char kTooMany[] = "an element has more than 1000 attributes";
// No tag of fewer characters has so many: a name, "=" and two quotes.
constexpr std::ptrdiff_t kManyAttributes = 4 * static_cast<std::ptrdiff_t>(kMostAttributes);

bool hasTooMany(pugi::xml_node node) {
    std::size_t count = 0;
    for (pugi::xml_attribute one = node.first_attribute(); one; one = one.next_attribute()) {
        if (++count > kMostAttributes) return true;
    }
    return false;
}

const char* idOf(pugi::xml_node node) {
    for (pugi::xml_attribute attribute = node.first_attribute();; attribute = attribute.next_attribute()) {
        const char* const name = attribute.name();
        if (name[0] == '\0') return "";
        if (name[0] == 'i' && name[1] == 'd' && name[2] == '\0') return attribute.value();
    }
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

const char* DrawingIndex::build(pugi::xml_node root, pugi::xml_node& culprit) {
    m_root = root;
    // The library's own walk is the fastest: it needs one call for a node.
    struct Walk : pugi::xml_tree_walker {
        bool for_each(pugi::xml_node& node) override {
            const char* const name = node.name();
            if (name[0] == '\0') return true;  // text
            ++count;
            // The walk counts the root's children as 0.
            if (depth() + 2 > kDeepestNesting) return refuse(node, kTooDeep);
            // Names stand in the text, so most elements are too short for many attributes.
            if (name - lastName > kManyAttributes && hasTooMany(last)) return refuse(last, kTooMany);
            last = node;
            lastName = name;
            const Element element = kindOfName(name);
            if (element == Element::style) styles->push_back(node);
            if (isResource(element)) {
                const std::string_view id = idOf(node);
                if (!id.empty()) resources->emplace(id, node);
            }
            return true;
        }

        bool refuse(pugi::xml_node node, const char* why) {
            culprit = node;
            reason = why;
            return false;
        }

        std::size_t count = 1;  // with the root
        std::vector<pugi::xml_node>* styles = nullptr;
        Nodes* resources = nullptr;
        pugi::xml_node last;
        const char* lastName = nullptr;
        pugi::xml_node culprit;
        const char* reason = nullptr;
    } walk;
    walk.last = root;
    walk.lastName = root.name();
    walk.styles = &m_styles;
    walk.resources = &m_resources;
    if (root.traverse(walk) && hasTooMany(walk.last)) walk.refuse(walk.last, kTooMany);
    m_elementCount = walk.count;
    culprit = walk.culprit;
    return walk.reason;
}

void DrawingIndex::collectTaken() {
    m_takenBuilt = true;
    int depth = 0;
    for (pugi::xml_node node = m_root; node; node = nextNode(node, m_root, depth)) {
        const std::string_view id = idOf(node);
        if (!id.empty() && isDigit(id.back())) noteId(id);
    }
    for (std::vector<std::uint32_t>& numbers : m_taken) std::sort(numbers.begin(), numbers.end());
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

#include "formats/svg/draw/context/drawing_tree.h"

#include <algorithm>
#include <cstring>
#include <new>

#include "formats/svg/values/text_scan.h"
#include "formats/svg/xml/namespaces.h"

namespace svg {

DrawingTree::DrawingTree(const std::string& text)
    : m_text(text), m_buffer(static_cast<char*>(kzutil::allocateLarge(text.size() + 1))) {
    if (!m_buffer) throw std::bad_alloc();
    std::memcpy(m_buffer.get(), text.data(), text.size());
    const pugi::xml_parse_result result =
        m_document.load_buffer_inplace(m_buffer.get(), text.size(), pugi::parse_default, pugi::encoding_utf8);
    if (result.status == pugi::status_out_of_memory) throw std::bad_alloc();
    m_root = m_document.document_element();
    pugi::xml_node culprit;
    if (!result || m_index.build(m_root, culprit) != nullptr) {
        m_root = {};
        return;
    }
    m_elements.reserve(m_index.elementCount());
    struct Walk : pugi::xml_tree_walker {
        bool for_each(pugi::xml_node& node) override {
            if (node.type() == pugi::node_element)
                elements->push_back({static_cast<std::size_t>(node.offset_debug()), node});
            return true;
        }
        std::vector<Entry>* elements = nullptr;
    } walk;
    walk.elements = &m_elements;
    m_elements.push_back({static_cast<std::size_t>(m_root.offset_debug()), m_root});
    m_root.traverse(walk);
}

pugi::xml_node DrawingTree::at(std::size_t offset) {
    // Objects stand in the order of their elements, so the next one is a few steps ahead, if not a use.
    constexpr std::size_t kSteps = 8;
    if (m_last < m_elements.size() && m_elements[m_last].offset <= offset) {
        const std::size_t end = std::min(m_last + kSteps, m_elements.size());
        for (std::size_t i = m_last; i < end; ++i) {
            if (m_elements[i].offset == offset) return m_elements[m_last = i].node;
        }
    }
    const auto found =
        std::lower_bound(m_elements.begin(), m_elements.end(), offset,
                         [](const Entry& entry, std::size_t wanted) { return entry.offset < wanted; });
    if (found == m_elements.end() || found->offset != offset) return {};
    m_last = static_cast<std::size_t>(found - m_elements.begin());
    return found->node;
}

bool DrawingTree::hasSpaceBefore(pugi::xml_node element) const {
    const std::ptrdiff_t name = element.offset_debug();
    return name >= 2 && isSpace(m_text[static_cast<std::size_t>(name) - 2]);
}

std::string_view referenceOf(pugi::xml_node element) {
    std::string_view qualified;
    for (const pugi::xml_attribute attribute : element.attributes()) {
        const QualifiedName name = splitName(attribute.name());
        if (name.local != "href") continue;
        if (name.prefix.empty()) return localReference(attribute.value());
        qualified = localReference(attribute.value());
    }
    return qualified;
}

}  // namespace svg

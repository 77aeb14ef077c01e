#include "checktree/tree_index.h"

#include <algorithm>
#include <functional>

#include "checktree/check_values.h"

namespace checktree {

namespace {

constexpr int kTextRoom = 1024;  // what one request of a text has room for; a longer text is asked for again

TVITEMW read(HWND tree, HTREEITEM item, UINT mask) {
    TVITEMW record{};
    record.mask = mask | TVIF_HANDLE;
    record.hItem = item;
    record.stateMask = kStateMask;
    ::SendMessageW(tree, TVM_GETITEMW, 0, reinterpret_cast<LPARAM>(&record));
    return record;
}

kzutil::WideString textOf(HWND tree, HTREEITEM item) {
    for (std::size_t room = kTextRoom;; room *= 2) {
        kzutil::WideString text(room, WCHAR(0));
        TVITEMW record{};
        record.mask = TVIF_TEXT | TVIF_HANDLE;
        record.hItem = item;
        record.pszText = text.data();
        record.cchTextMax = static_cast<int>(room);
        if (!::SendMessageW(tree, TVM_GETITEMW, 0, reinterpret_cast<LPARAM>(&record)) || !record.pszText)
            return {};
        kzutil::WideString found(record.pszText);
        if (found.size() + 1 < room) return found;
    }
}

HTREEITEM parentOf(HWND tree, HTREEITEM item) {
    return reinterpret_cast<HTREEITEM>(
        ::SendMessageW(tree, TVM_GETNEXTITEM, TVGN_PARENT, reinterpret_cast<LPARAM>(item)));
}

}  // namespace

std::size_t TreeIndex::ChildHash::operator()(const Child& child) const {
    const std::size_t text = std::hash<kzutil::WideView>()(child.text);
    return text ^ (std::hash<HTREEITEM>()(child.parent) * 0x9e3779b97f4a7c15ULL);
}

TreeIndex::Contents::Contents() : byText(&memory), nodes(&memory) {}

void TreeIndex::attach(HWND tree) {
    m_tree = tree;
    forget();
}

void TreeIndex::forget() {
    m_contents.reset();
    m_dataKnown = false;
    m_byData.clear();
}

TreeIndex::Contents& TreeIndex::learn() {
    if (m_contents) return *m_contents;
    forget();
    m_contents.emplace();
    forEachItem(m_tree, [this](HTREEITEM item) {
        inserted(item, parentOf(m_tree, item), textOf(m_tree, item));
        checkChanged(item, checkOfState(read(m_tree, item, TVIF_STATE).state));
    });
    // A question on the way may have been answered by somebody who changed the items.
    if (!m_contents) m_contents.emplace();
    return *m_contents;
}

void TreeIndex::learnData() {
    if (m_dataKnown) return;
    m_byData.clear();
    // emplace keeps the first of several: the one that comes first in pre-order.
    forEachItem(m_tree, [this](HTREEITEM item) {
        m_byData.emplace(static_cast<ULONG_PTR>(read(m_tree, item, TVIF_PARAM).lParam), item);
    });
    m_dataKnown = true;
}

HTREEITEM TreeIndex::findChild(HTREEITEM parent, kzutil::WideView text) {
    const auto& byText = learn().byText;
    const auto found = byText.find(Child{parent, text});
    return found == byText.end() ? nullptr : found->second;
}

HTREEITEM TreeIndex::findData(ULONG_PTR data) {
    learnData();
    const auto found = m_byData.find(data);
    return found == m_byData.end() ? nullptr : found->second;
}

int& TreeIndex::counterOf(Node& parent, int check, int& ignored) {
    return check == kChecked ? parent.checked : check == kUnchecked ? parent.unchecked : ignored;
}

const TreeIndex::Node& TreeIndex::nodeOf(HTREEITEM item) {
    return learn().nodes[item];
}

bool TreeIndex::allChildrenAre(HTREEITEM parent, int check) {
    Node node = nodeOf(parent);
    int partly = node.children - node.checked - node.unchecked;
    return counterOf(node, check, partly) == node.children;
}

bool TreeIndex::hasChildren(HTREEITEM item) {
    return nodeOf(item).children > 0;
}

int TreeIndex::checkOf(HTREEITEM item) {
    return nodeOf(item).check;
}

// A copy that lives as long as the contents.
kzutil::WideView TreeIndex::keep(kzutil::WideView text) {
    if (text.empty()) return {};
    auto* kept =
        static_cast<WCHAR*>(m_contents->memory.allocate(text.size() * sizeof(WCHAR), alignof(WCHAR)));
    std::copy(text.begin(), text.end(), kept);
    return {kept, text.size()};
}

void TreeIndex::inserted(HTREEITEM item, HTREEITEM parent, kzutil::WideView text) {
    m_dataKnown = false;
    if (!m_contents) return;
    auto& nodes = m_contents->nodes;
    const auto [node, isNew] = nodes.try_emplace(item);
    if (!isNew) return;  // somebody asked while it was inserted, so that it was learned with all the others
    node->second.parent = parent;
    m_contents->byText.emplace(Child{parent, keep(text)}, item);
    Node& above = nodes[parent];
    ++above.children;
    ++above.unchecked;
}

void TreeIndex::checkChanged(HTREEITEM item, int check) {
    if (!m_contents) return;
    Node& node = m_contents->nodes[item];
    if (node.check == check) return;
    Node& above = m_contents->nodes[node.parent];
    int ignored = 0;
    --counterOf(above, node.check, ignored);
    ++counterOf(above, check, ignored);
    node.check = check;
}

}  // namespace checktree

// What a check tree needs to know of its items without asking each of them: the child of a text, the first
// item of a data value, the check of an item, and which checks and children its children have. A tree of a hundred
// thousand items stays linear to fill, to check and to read.
//
// The tree view holds the truth. The index is told of every change that the check tree makes itself, and
// forgets everything when somebody else changes items; it is then built anew from the tree view when it is
// next asked.
#pragma once

#include <memory_resource>
#include <optional>
#include <unordered_map>

#include "kzutil/utf.h"
#include "platform/winapi.h"

namespace checktree {

class TreeIndex {
public:
    // The answers below are about this tree view. Forgets everything.
    void attach(HWND tree);
    void forget();

    // The first child whose text equals the text, case-sensitive; a null parent stands for the top level.
    HTREEITEM findChild(HTREEITEM parent, kzutil::WideView text);
    // The first item in pre-order with the data value.
    HTREEITEM findData(ULONG_PTR data);
    // True when the item has children and all of them read the check value, or when it has none.
    bool allChildrenAre(HTREEITEM parent, int check);
    bool hasChildren(HTREEITEM item);
    int checkOf(HTREEITEM item);

    // What the check tree did.
    void inserted(HTREEITEM item, HTREEITEM parent, kzutil::WideView text);
    void dataChanged() { m_dataKnown = false; }
    void checkChanged(HTREEITEM item, int check);

private:
    struct Child {
        HTREEITEM parent;
        kzutil::WideView text;
        bool operator==(const Child&) const = default;
    };
    struct ChildHash {
        std::size_t operator()(const Child& child) const;
    };
    struct Node {
        HTREEITEM parent = nullptr;
        int check = 1;
        int children = 0;
        int checked = 0;
        int unchecked = 0;
    };
    // In one piece of memory, texts included: it is built once and forgotten as a whole.
    struct Contents {
        Contents();  // its own: std::optional asks for one before members' initializers are known
        std::pmr::monotonic_buffer_resource memory;
        std::pmr::unordered_map<Child, HTREEITEM, ChildHash> byText;
        std::pmr::unordered_map<HTREEITEM, Node> nodes;
    };

    Contents& learn();
    void learnData();
    const Node& nodeOf(HTREEITEM item);
    kzutil::WideView keep(kzutil::WideView text);
    static int& counterOf(Node& parent, int check, int& ignored);

    HWND m_tree = nullptr;
    std::optional<Contents> m_contents;  // none: not known
    bool m_dataKnown = false;
    std::unordered_map<ULONG_PTR, HTREEITEM> m_byData;
};

// Visits every item of a tree view in pre-order.
template <class Visit>
void forEachItem(HWND tree, Visit visit) {
    const auto next = [tree](WPARAM which, HTREEITEM item) {
        return reinterpret_cast<HTREEITEM>(
            ::SendMessageW(tree, TVM_GETNEXTITEM, which, reinterpret_cast<LPARAM>(item)));
    };
    HTREEITEM item = next(TVGN_ROOT, nullptr);
    while (item) {
        visit(item);
        HTREEITEM following = next(TVGN_CHILD, item);
        while (!following && item) {
            following = next(TVGN_NEXT, item);
            if (!following) item = next(TVGN_PARENT, item);
        }
        item = following;
    }
}

}  // namespace checktree

#include <algorithm>

#include "platform/headless/tree/tree.h"

namespace headless {

namespace {

// The sibling that the new item follows; false when the request names none.
bool place_of(Tree& tree, const TVINSERTSTRUCTW& insert, Item& parent, Item*& after) {
    after = nullptr;
    if (insert.hInsertAfter == TVI_FIRST) return true;
    if (insert.hInsertAfter == TVI_LAST || insert.hInsertAfter == nullptr) {
        after = parent.last_child;
        return true;
    }
    if (insert.hInsertAfter == TVI_SORT) {
        const std::u16string text =
            insert.item.mask & TVIF_TEXT && insert.item.pszText && insert.item.pszText != LPSTR_TEXTCALLBACKW
                ? insert.item.pszText
                : u"";
        for (Item* sibling = parent.first_child; sibling && sibling->text <= text; sibling = sibling->next)
            after = sibling;
        return true;
    }
    after = tree.items.find(insert.hInsertAfter);
    return after && after->parent == &parent;
}

void apply(Item& item, const TVITEMW& record) {
    if (record.mask & TVIF_TEXT) {
        item.text_callback = record.pszText == LPSTR_TEXTCALLBACKW;
        item.text = item.text_callback || !record.pszText ? u"" : record.pszText;
    }
    if (record.mask & TVIF_IMAGE) item.image = record.iImage;
    if (record.mask & TVIF_SELECTEDIMAGE) item.selected_image = record.iSelectedImage;
    if (record.mask & TVIF_CHILDREN) item.children = record.cChildren;
    if (record.mask & TVIF_PARAM) item.data = record.lParam;
    // Expansion changes rows, and is up to the caller.
    if (record.mask & TVIF_STATE) {
        const UINT mask = record.stateMask & ~TVIS_EXPANDED;
        item.state = (item.state & ~mask) | (record.state & mask);
    }
}

// What the rows and the selection must not point to any longer.
void forget(Tree& tree, Item& item) {
    if (tree.selected == &item) tree.selected = nullptr;
    if (tree.drop_target == &item) tree.drop_target = nullptr;
    if (tree.first_visible == &item) {
        Item* parent = item.level > 0 ? item.parent : nullptr;
        tree.first_visible = item.next ? item.next : item.previous ? item.previous : parent;
    }
}

void remove_leaf(Tree& tree, Item& item) {
    forget(tree, item);
    Item& parent = *item.parent;
    tree.items.remove(item);
    if (parent.first_child || &parent == &tree.items.root()) return;
    if (parent.children != I_CHILDRENCALLBACK) parent.children = 0;
}

Item& deepest_first(Item& item) {
    Item* first = &item;
    while (first->first_child) first = first->first_child;
    return *first;
}

// Removes a branch, children before their parents, telling the window's parent of each item while
// that still exists.
void remove_branch(Tree& tree, HTREEITEM branch) {
    while (Item* top = tree.items.find(branch)) {
        const HTREEITEM leaf = deepest_first(*top).handle;
        notify_change(tree, TVN_DELETEITEMW, 0, tree.items.find(leaf), nullptr);
        Item* doomed = tree.items.find(leaf);
        if (doomed && !doomed->first_child) remove_leaf(tree, *doomed);
    }
}

// Which row is to stand at the top when a branch is gone: the same as before, the deleted item's neighbour or
// parent, or, when the top row goes with its parent, the very first row (null).
HTREEITEM top_without(const Tree& tree, const Item& branch) {
    const Item* top = tree.first_visible;
    if (!top) return nullptr;
    if (top != &branch) return is_within(*top, branch) ? nullptr : top->handle;
    const Item* parent = branch.level > 0 ? branch.parent : nullptr;
    const Item* other = branch.next ? branch.next : branch.previous ? branch.previous : parent;
    return other ? other->handle : nullptr;
}

}  // namespace

HTREEITEM insert_item(Tree& tree, const TVINSERTSTRUCTW& insert) {
    const bool top = insert.hParent == nullptr || insert.hParent == TVI_ROOT;
    Item* parent = top ? &tree.items.root() : tree.items.find(insert.hParent);
    Item* after = nullptr;
    if (!parent || !place_of(tree, insert, *parent, after)) return nullptr;
    // The text may not fit into memory; nothing has changed then.
    Item described;
    apply(described, insert.item);
    Item& item = tree.items.insert(*parent, after);
    item.text = std::move(described.text);
    item.text_callback = described.text_callback;
    item.state = described.state;
    item.image = described.image;
    item.selected_image = described.selected_image;
    item.children = described.children;
    item.data = described.data;
    if ((insert.item.mask & TVIF_STATE) && (insert.item.state & insert.item.stateMask & TVIS_EXPANDED))
        tree.items.expand(item);
    if (parent->children == 0) parent->children = 1;
    measure(tree, item);
    // What comes to stand above the first row becomes the first row.
    if (!tree.first_visible || item.next == tree.first_visible) tree.first_visible = &item;
    const HTREEITEM handle = item.handle;
    if (item.shown) update_scroll_bars(tree);
    return handle;
}

void delete_children(Tree& tree, Item& parent) {
    const HTREEITEM handle = parent.handle;
    for (;;) {
        Item* found = handle == TVI_ROOT ? &tree.items.root() : tree.items.find(handle);
        if (!found || !found->first_child) return;
        remove_branch(tree, found->first_child->handle);
    }
}

bool delete_item(Tree& tree, HTREEITEM handle) {
    if (handle == nullptr || handle == TVI_ROOT) {
        delete_children(tree, tree.items.root());
        tree.scroll_x = 0;
        update_scroll_bars(tree);
        return true;
    }
    Item* item = tree.items.find(handle);
    if (!item) return false;
    HTREEITEM heir = nullptr;
    if (tree.selected && is_within(*tree.selected, *item)) {
        Item* other = item->next ? item->next : item->level > 0 ? item->parent : item->previous;
        heir = other ? other->handle : nullptr;
    }
    const HTREEITEM top = top_without(tree, *item);
    Item* top_item = tree.items.find(top);
    // By how much a page that began there would have reached beyond the last row, of those before.
    const int beyond =
        top_item ? row_of(tree, *top_item) + visible_count(tree) - tree.items.rows().count() : 0;
    remove_branch(tree, handle);
    // Selecting the heir scrolls to it; the rows return to their place afterwards. What is now left empty
    // below the last row stays so until something else scrolls.
    if (heir && !tree.selected) select(tree, heir, TVC_UNKNOWN);
    top_item = tree.items.find(top);
    const int row = top_item && top_item->shown ? row_of(tree, *top_item) - std::max(beyond, 0) : 0;
    tree.first_visible = row_at(tree, std::max(row, 0));
    update_scroll_bars(tree);
    return true;
}

bool get_item(Tree& tree, TVITEMW& record) {
    Item* item = tree.items.find(record.hItem);
    if (!item) return false;
    const bool text = (record.mask & TVIF_TEXT) && record.pszText && record.cchTextMax > 0;
    if (record.mask & TVIF_CHILDREN) record.cChildren = item->children;
    if (record.mask & TVIF_IMAGE) record.iImage = item->image;
    if (record.mask & TVIF_SELECTEDIMAGE) record.iSelectedImage = item->selected_image;
    if (record.mask & TVIF_PARAM) record.lParam = item->data;
    // The whole state, whatever the mask asks for: so does the real control.
    if (record.mask & TVIF_STATE) record.state = item->state;
    if (text && !item->text_callback) {
        const std::size_t length =
            std::min(item->text.size(), static_cast<std::size_t>(record.cchTextMax - 1));
        std::copy_n(item->text.data(), length, record.pszText);
        record.pszText[length] = 0;
    }
    ask_parent(tree, *item, record);
    return true;
}

bool set_item(Tree& tree, const TVITEMW& record) {
    Item* item = tree.items.find(record.hItem);
    if (!item) return false;
    apply(*item, record);
    if (record.mask & (TVIF_TEXT | TVIF_STATE)) measure(tree, *item);
    if ((record.mask & TVIF_STATE) && (record.stateMask & TVIS_EXPANDED)) {
        if (record.state & TVIS_EXPANDED)
            tree.items.expand(*item);
        else
            tree.items.collapse(*item);
        update_scroll_bars(tree);
    }
    return true;
}

}  // namespace headless

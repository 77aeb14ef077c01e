#include <algorithm>
#include <vector>

#include "platform/headless/tree/tree.h"

namespace headless {

namespace {

bool has_children(Tree& tree, const Item& item) {
    TVITEMW record = {};
    record.mask = TVIF_CHILDREN;
    record.cChildren = item.children;
    ask_parent(tree, item, record);
    return record.cChildren > 0;
}

// Scrolls up so that as many children as possible are seen, and the item still is.
void show_children(Tree& tree, Item& item) {
    Item* last = item.last_child;
    const int page = visible_count(tree);
    const int top = row_of(tree, *tree.first_visible);
    const int last_row = row_of(tree, *last);
    if (last_row < top + page) return;
    const int wanted = std::min(row_of(tree, item), last_row - page + 1);
    if (wanted > top) set_first_visible(tree, row_at(tree, wanted));
}

void forget_children(Tree& tree, Item& item) {
    item.state &= ~TVIS_EXPANDEDONCE;
    const HTREEITEM handle = item.handle;
    const int children = item.children;
    delete_children(tree, item);
    // It may get children again: the owner fills it when it is next expanded.
    if (Item* found = tree.items.find(handle)) found->children = children;
}

}  // namespace

bool expand(Tree& tree, HTREEITEM handle, Cause cause) {
    Item* item = tree.items.find(handle);
    if (!item || !has_children(tree, *item)) return false;
    item = tree.items.find(handle);
    if (!item) return false;
    // The parent is told of the first expansion, and of everything that the user does.
    const bool tell = cause == Cause::user || !(item->state & TVIS_EXPANDEDONCE);
    if (tell) {
        if (notify_change(tree, TVN_ITEMEXPANDINGW, TVE_EXPAND, nullptr, item)) return false;
        item = tree.items.find(handle);
    }
    if (!item || !item->first_child) return false;
    tree.items.expand(*item);
    if (tell) {
        notify_change(tree, TVN_ITEMEXPANDEDW, TVE_EXPAND, nullptr, item);
        item = tree.items.find(handle);
        if (!item) return true;
        item->state |= TVIS_EXPANDEDONCE;
    }
    if (item->shown && item->last_child) {
        update_scroll_bars(tree);
        show_children(tree, *item);
    }
    return true;
}

bool collapse(Tree& tree, HTREEITEM handle, Cause cause, bool reset) {
    Item* item = tree.items.find(handle);
    if (!item || !has_children(tree, *item)) return false;
    item = tree.items.find(handle);
    if (!item) return false;
    if (cause == Cause::program && !is_expanded(*item)) {
        if (reset) forget_children(tree, *item);
        return false;
    }
    const bool tell = cause == Cause::user || !(item->state & TVIS_EXPANDEDONCE);
    if (tell) {
        if (notify_change(tree, TVN_ITEMEXPANDINGW, TVE_COLLAPSE, nullptr, item)) return false;
        item = tree.items.find(handle);
        if (!item || !item->first_child || !is_expanded(*item)) return false;
    }
    // What is hidden can be neither at the top nor selected.
    if (tree.first_visible && is_within(*tree.first_visible, *item)) tree.first_visible = item;
    tree.items.collapse(*item);
    if (tell) {
        notify_change(tree, TVN_ITEMEXPANDEDW, TVE_COLLAPSE, nullptr, item);
        item = tree.items.find(handle);
        if (!item) return true;
    }
    if (tree.selected && tree.selected != item && is_within(*tree.selected, *item))
        select_silently(tree, item);
    if (reset) forget_children(tree, *item);
    set_first_visible(tree, tree.first_visible);
    update_scroll_bars(tree);
    return true;
}

bool toggle(Tree& tree, HTREEITEM handle, Cause cause) {
    Item* item = tree.items.find(handle);
    if (!item) return false;
    return is_expanded(*item) ? collapse(tree, handle, cause) : expand(tree, handle, cause);
}

void expand_branch(Tree& tree, HTREEITEM handle) {
    Item* top = tree.items.find(handle);
    if (!top) return;
    std::vector<HTREEITEM> branch = {handle};
    for (Item* item = next_in_branch(*top, *top); item; item = next_in_branch(*item, *top))
        branch.push_back(item->handle);
    for (HTREEITEM item : branch) expand(tree, item, Cause::user);
}

}  // namespace headless

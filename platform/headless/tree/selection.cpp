#include "platform/headless/tree/tree.h"

namespace headless {

void select_silently(Tree& tree, Item* item) {
    if (tree.selected) tree.selected->state &= ~TVIS_SELECTED;
    tree.selected = item;
    if (item) item->state |= TVIS_SELECTED;
}

bool select(Tree& tree, HTREEITEM handle, UINT cause) {
    Item* item = tree.items.find(handle);
    if (handle && !item) return false;
    if (item == tree.selected) return true;
    if (notify_change(tree, TVN_SELCHANGINGW, cause, tree.selected, item)) return false;
    item = tree.items.find(handle);
    if (handle && !item) return false;
    const HTREEITEM before = tree.selected ? tree.selected->handle : nullptr;
    select_silently(tree, item);
    if (item) ensure_visible(tree, handle);
    notify_change(tree, TVN_SELCHANGEDW, cause, tree.items.find(before), tree.items.find(handle));
    return true;
}

}  // namespace headless

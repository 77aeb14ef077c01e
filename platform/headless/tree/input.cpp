#include <algorithm>

#include "platform/headless/tree/tree.h"

namespace headless {

LRESULT button_down(Tree& tree, POINT point) {
    TVHITTESTINFO test = {};
    test.pt = point;
    hit_test(tree, test);
    // The parent hears of the click first; then the click acts, and at last the tree takes the focus.
    if (!notify(tree, NM_CLICK)) {
        if (test.flags & TVHT_ONITEMBUTTON)
            toggle(tree, test.hItem, Cause::user);
        else if (test.flags & (TVHT_ONITEMICON | TVHT_ONITEMLABEL))
            select(tree, test.hItem, TVC_BYMOUSE);
    }
    if (IsWindow(tree.window.handle)) SetFocus(tree.window.handle);
    return 0;
}

LRESULT double_click(Tree& tree, POINT point) {
    TVHITTESTINFO test = {};
    test.pt = point;
    hit_test(tree, test);
    if (notify(tree, NM_DBLCLK)) return 0;
    if (test.flags & TVHT_ONITEMINDENT) {
        // A double click on a line toggles the parent that the line belongs to.
        if (!(tree.window.style & TVS_HASLINES)) return 0;
        int level = static_cast<int>(point.x) / tree.indent;
        if (!(tree.window.style & TVS_LINESATROOT)) ++level;
        Item* item = tree.items.find(test.hItem);
        while (item && item->level > level) item = item->parent;
        if (item) toggle(tree, item->handle, Cause::user);
        return 0;
    }
    const UINT toggling = TVHT_ONITEMBUTTON | TVHT_ONITEMICON | TVHT_ONITEMLABEL | TVHT_ONITEMSTATEICON;
    if (test.flags & toggling) toggle(tree, test.hItem, Cause::user);
    return 0;
}

LRESULT key_down(Tree& tree, WPARAM key) {
    if (notify_key(tree, key) || !tree.selected) return 0;
    Item& current = *tree.selected;
    const HTREEITEM handle = current.handle;
    const int last = tree.items.rows().count() - 1;
    auto moved = [&](int rows) { return row_at(tree, std::clamp(row_of(tree, current) + rows, 0, last)); };
    Item* parent = current.level > 0 ? current.parent : nullptr;
    Item* target = nullptr;
    switch (static_cast<int>(key)) {
        case VK_UP:
            target = moved(-1);
            break;
        case VK_DOWN:
            target = moved(1);
            break;
        case VK_PRIOR:
            target = moved(-visible_count(tree));
            break;
        case VK_NEXT:
            target = moved(visible_count(tree));
            break;
        case VK_HOME:
            target = row_at(tree, 0);
            break;
        case VK_END:
            target = row_at(tree, last);
            break;
        case VK_BACK:
            target = parent;
            break;
        case VK_LEFT:
            if (is_expanded(current))
                collapse(tree, handle, Cause::user);
            else
                target = parent;
            break;
        case VK_RIGHT:
            if (is_expanded(current))
                target = current.first_child;
            else
                expand(tree, handle, Cause::user);
            break;
        case VK_ADD:
            expand(tree, handle, Cause::user);
            break;
        case VK_SUBTRACT:
            collapse(tree, handle, Cause::user);
            break;
        case VK_MULTIPLY:
            expand_branch(tree, handle);
            break;
        case VK_RETURN:
            notify(tree, NM_RETURN);
            break;
        default:
            break;
    }
    if (target && target != tree.selected) select(tree, target->handle, TVC_BYKEYBOARD);
    return 0;
}

}  // namespace headless

#include <algorithm>

// The tree view's messages.
#include <cstring>
#include <typeinfo>

#include "platform/headless/controls.h"
#include "platform/headless/guard.h"
#include "platform/headless/tree/tree.h"

using namespace headless;

namespace {

LRESULT answer(HTREEITEM handle) {
    return reinterpret_cast<LRESULT>(handle);
}

LRESULT answer(const Item* item) {
    return item ? answer(item->handle) : 0;
}

HTREEITEM handle_of(LPARAM value) {
    return reinterpret_cast<HTREEITEM>(value);
}

Item* row_below(Tree& tree, Item& item) {
    return item.first_child && is_expanded(item) ? item.first_child : after_branch(item, tree.items.root());
}

Item* row_above(Tree& tree, Item& item) {
    if (!item.previous) return item.parent == &tree.items.root() ? nullptr : item.parent;
    Item* last = item.previous;
    while (last->last_child && is_expanded(*last)) last = last->last_child;
    return last;
}

LRESULT get_next_item(Tree& tree, UINT relation, HTREEITEM handle) {
    switch (relation) {
        case TVGN_ROOT:
            return answer(tree.items.root().first_child);
        case TVGN_FIRSTVISIBLE:
            return answer(tree.first_visible);
        case TVGN_CARET:
            return answer(tree.selected);
        case TVGN_DROPHILITE:
            return answer(tree.drop_target);
        case TVGN_LASTVISIBLE:
            return answer(row_at(tree, tree.items.rows().count() - 1));
        default:
            break;
    }
    if (relation == TVGN_CHILD && (handle == TVI_ROOT || handle == nullptr))
        return answer(tree.items.root().first_child);
    Item* item = tree.items.find(handle);
    if (!item) return 0;
    switch (relation) {
        case TVGN_NEXT:
            return answer(item->next);
        case TVGN_PREVIOUS:
            return answer(item->previous);
        case TVGN_PARENT:
            return item->level > 0 ? answer(item->parent) : 0;
        case TVGN_CHILD:
            return answer(item->first_child);
        case TVGN_NEXTVISIBLE:
            return answer(row_below(tree, *item));
        case TVGN_PREVIOUSVISIBLE:
            return answer(row_above(tree, *item));
        default:
            return 0;
    }
}

LRESULT select_item(Tree& tree, UINT relation, HTREEITEM handle) {
    Item* item = tree.items.find(handle);
    if (handle && !item) return FALSE;
    switch (relation & 0xF) {
        case TVGN_CARET:
            return select(tree, handle, TVC_UNKNOWN);
        case TVGN_FIRSTVISIBLE:
            if (item) {
                ensure_visible(tree, handle);
                set_first_visible(tree, tree.items.find(handle));
            }
            return TRUE;
        case TVGN_DROPHILITE:
            if (tree.drop_target) tree.drop_target->state &= ~TVIS_DROPHILITED;
            tree.drop_target = item;
            if (item) item->state |= TVIS_DROPHILITED;
            return TRUE;
        default:
            return FALSE;
    }
}

LRESULT expand_item(Tree& tree, UINT action, HTREEITEM handle) {
    switch (action & TVE_TOGGLE) {
        case TVE_EXPAND:
            return expand(tree, handle, Cause::program);
        case TVE_COLLAPSE:
            return collapse(tree, handle, Cause::program, (action & TVE_COLLAPSERESET) != 0);
        case TVE_TOGGLE:
            return toggle(tree, handle, Cause::program);
        default:
            return FALSE;
    }
}

// The rectangle arrives holding the item's handle, unaligned.
LRESULT get_item_rect(Tree& tree, bool text_only, RECT* rect) {
    if (!rect) return FALSE;
    HTREEITEM handle;
    std::memcpy(&handle, rect, sizeof(handle));
    return item_rect(tree, handle, text_only, *rect);
}

LRESULT set_image_list(Tree& tree, WPARAM kind, HIMAGELIST images) {
    if (kind != TVSIL_NORMAL && kind != TVSIL_STATE) return 0;
    HIMAGELIST& place = kind == TVSIL_NORMAL ? tree.normal_images : tree.state_images;
    const HIMAGELIST before = place;
    place = images;
    measure_all(tree);
    update_scroll_bars(tree);
    return reinterpret_cast<LRESULT>(before);
}

void resize(Tree& tree) {
    tree.client = client_size(tree.window);
    update_scroll_bars(tree);
    set_first_visible(tree, tree.first_visible);
}

LRESULT take_focus(Tree& tree) {
    if (!tree.selected && tree.first_visible) select(tree, tree.first_visible->handle, TVC_UNKNOWN);
    notify(tree, NM_SETFOCUS);
    return 0;
}

POINT point_of(LPARAM position) {
    return {static_cast<std::int16_t>(LOWORD(position)), static_cast<std::int16_t>(HIWORD(position))};
}

constexpr int rows_per_notch = 3;
constexpr int notch = 120;

LRESULT handle_tree_message(Tree& tree, UINT message, WPARAM wParam, LPARAM lParam) {
    switch (message) {
        case TVM_INSERTITEMW:
            return answer(insert_item(tree, *reinterpret_cast<const TVINSERTSTRUCTW*>(lParam)));
        case TVM_DELETEITEM:
            return delete_item(tree, handle_of(lParam));
        case TVM_EXPAND:
            return expand_item(tree, static_cast<UINT>(wParam), handle_of(lParam));
        case TVM_GETITEMRECT:
            return get_item_rect(tree, wParam != 0, reinterpret_cast<RECT*>(lParam));
        case TVM_GETCOUNT:
            return tree.items.count();
        case TVM_GETINDENT:
            return tree.indent;
        case TVM_SETINDENT:
            tree.indent = std::max(static_cast<int>(wParam), 10);
            measure_all(tree);
            update_scroll_bars(tree);
            return 0;
        case TVM_GETIMAGELIST:
            return reinterpret_cast<LRESULT>(wParam == TVSIL_STATE ? tree.state_images : tree.normal_images);
        case TVM_SETIMAGELIST:
            return set_image_list(tree, wParam, reinterpret_cast<HIMAGELIST>(lParam));
        case TVM_GETNEXTITEM:
            return get_next_item(tree, static_cast<UINT>(wParam), handle_of(lParam));
        case TVM_SELECTITEM:
            return select_item(tree, static_cast<UINT>(wParam), handle_of(lParam));
        case TVM_GETVISIBLECOUNT:
            return static_cast<int>(tree.client.cy) / tree.row_height;
        case TVM_HITTEST:
            return answer(hit_test(tree, *reinterpret_cast<TVHITTESTINFO*>(lParam)));
        case TVM_ENSUREVISIBLE:
            return ensure_visible(tree, handle_of(lParam));
        case TVM_GETITEMHEIGHT:
            return tree.row_height;
        case TVM_GETITEMSTATE: {
            Item* item = tree.items.find(handle_of(static_cast<LPARAM>(wParam)));
            return item ? item->state & static_cast<UINT>(lParam) : 0;
        }
        case TVM_GETITEMW:
            return get_item(tree, *reinterpret_cast<TVITEMW*>(lParam));
        case TVM_SETITEMW:
            return set_item(tree, *reinterpret_cast<const TVITEMW*>(lParam));
        default:
            return 0;
    }
}

LRESULT handle_window_message(Tree& tree, UINT message, WPARAM wParam, LPARAM lParam) {
    switch (message) {
        case WM_SIZE:
            resize(tree);
            return 0;
        case WM_STYLECHANGED:
            measure_all(tree);
            update_scroll_bars(tree);
            return 0;
        case WM_DESTROY:
            delete_children(tree, tree.items.root());
            return 0;
        case WM_SETREDRAW:
            tree.redraw = wParam != 0;
            return 0;
        case WM_SETFOCUS:
            return take_focus(tree);
        case WM_KILLFOCUS:
            notify(tree, NM_KILLFOCUS);
            return 0;
        case WM_GETDLGCODE:
            return DLGC_WANTARROWS | DLGC_WANTCHARS;
        case WM_LBUTTONDOWN:
            return button_down(tree, point_of(lParam));
        case WM_LBUTTONDBLCLK:
            return double_click(tree, point_of(lParam));
        case WM_KEYDOWN:
            return key_down(tree, wParam);
        case WM_VSCROLL:
            scroll_vertically(tree, LOWORD(wParam));
            return 0;
        case WM_HSCROLL:
            scroll_horizontally(tree, LOWORD(wParam));
            return 0;
        case WM_MOUSEWHEEL:
            scroll_rows(tree, -rows_per_notch * static_cast<std::int16_t>(HIWORD(wParam)) / notch);
            return 0;
        case WM_SETFONT:
            tree.font = wParam;
            return 0;
        case WM_GETFONT:
            return static_cast<LRESULT>(tree.font);
        default:
            return DefWindowProcW(tree.window.handle, message, wParam, lParam);
    }
}

}  // namespace

LRESULT headless::tree_procedure(HWND handle, UINT message, WPARAM wParam, LPARAM lParam) {
    return guarded([&]() -> LRESULT {
        std::shared_ptr<Window> window = hold(handle);
        if (!window) return 0;
        if (message == WM_NCCREATE) window->state = std::make_unique<Tree>(*window);
        ControlState* state = window->state.get();
        auto* tree = state && typeid(*state) == typeid(Tree) ? static_cast<Tree*>(state) : nullptr;
        if (!tree) return DefWindowProcW(handle, message, wParam, lParam);
        constexpr UINT last_tree_message = TV_FIRST + 0xFF;
        return message >= TV_FIRST && message <= last_tree_message
                   ? handle_tree_message(*tree, message, wParam, lParam)
                   : handle_window_message(*tree, message, wParam, lParam);
    });
}

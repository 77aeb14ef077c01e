#include <algorithm>

#include "platform/headless/tree/tree.h"

namespace headless {

namespace {

// The codes of WM_VSCROLL and WM_HSCROLL.
enum : int { line_back, line_on, page_back, page_on, thumb, thumb_track, to_start, to_end };

constexpr int horizontal_step = 15;

}  // namespace

int visible_count(const Tree& tree) {
    return std::max<int>(static_cast<int>(tree.client.cy) / tree.row_height, 1);
}

Item* row_at(Tree& tree, int index) {
    return static_cast<Item*>(tree.items.rows().at(index));
}

int row_of(Tree& tree, const Item& item) {
    return tree.items.rows().index(item);
}

void set_first_visible(Tree& tree, Item* item) {
    const int count = tree.items.rows().count();
    if (!item || !item->shown) item = row_at(tree, 0);
    if (item) item = row_at(tree, std::clamp(count - visible_count(tree), 0, row_of(tree, *item)));
    tree.first_visible = item;
}

bool ensure_visible(Tree& tree, HTREEITEM handle) {
    Item* item = tree.items.find(handle);
    if (!item) return false;
    // From the inside out, and told like expansions by the user.
    HTREEITEM hiding = item->level > 0 ? item->parent->handle : nullptr;
    while (Item* parent = tree.items.find(hiding)) {
        hiding = parent->level > 0 ? parent->parent->handle : nullptr;
        if (is_expanded(*parent)) continue;
        if (!expand(tree, parent->handle, Cause::user)) return false;
    }
    item = tree.items.find(handle);
    if (!item || !item->shown) return false;
    const int row = row_of(tree, *item);
    const int top = row_of(tree, *tree.first_visible);
    const int page = visible_count(tree);
    if (row >= top && row < top + page) return false;
    set_first_visible(tree, row_at(tree, row < top ? row : row - page + 1));
    return true;
}

void update_scroll_bars(Tree& tree) {
    // Showing a bar sends WM_SIZE, which comes here again.
    if (tree.updating_bars) return;
    tree.updating_bars = true;
    const bool allowed = !(tree.window.style & TVS_NOSCROLL);
    const SIZE bar = {GetSystemMetrics(SM_CXVSCROLL), GetSystemMetrics(SM_CYHSCROLL)};
    const RECT frame = frame_of(tree.window.style, tree.window.extended_style);
    const RECT& rect = tree.window.rect;
    const int width = rect.right - rect.left - frame.left - frame.right;
    const int height = rect.bottom - rect.top - frame.top - frame.bottom;
    // The last row counts without the pixel that parts it from a next one.
    const int content_height = tree.items.rows().count() * tree.row_height - 1;
    bool horizontal = allowed && tree.items.rows().widest() > width;
    const bool vertical = allowed && content_height > height - (horizontal ? bar.cy : 0);
    horizontal = allowed && tree.items.rows().widest() > width - (vertical ? bar.cx : 0);
    set_scroll_bars(tree.window, horizontal, vertical);
    tree.client = client_size(tree.window);
    if (!horizontal) tree.scroll_x = 0;
    tree.updating_bars = false;
}

void scroll_rows(Tree& tree, int rows) {
    if (!tree.first_visible || !(tree.window.style & WS_VSCROLL)) return;
    const int top = row_of(tree, *tree.first_visible) + rows;
    set_first_visible(tree, row_at(tree, std::clamp(top, 0, tree.items.rows().count() - 1)));
}

void scroll_vertically(Tree& tree, int code) {
    const int page = visible_count(tree);
    switch (code) {
        case line_back:
            return scroll_rows(tree, -1);
        case line_on:
            return scroll_rows(tree, 1);
        case page_back:
            return scroll_rows(tree, -page);
        case page_on:
            return scroll_rows(tree, page);
        case to_start:
            return scroll_rows(tree, -tree.items.rows().count());
        case to_end:
            return scroll_rows(tree, tree.items.rows().count());
        default:
            return;
    }
}

void scroll_horizontally(Tree& tree, int code) {
    const int most = std::max<int>(tree.items.rows().widest() - static_cast<int>(tree.client.cx), 0);
    int position = tree.scroll_x;
    if (code == line_back) position -= horizontal_step;
    if (code == line_on) position += horizontal_step;
    if (code == page_back) position -= static_cast<int>(tree.client.cx);
    if (code == page_on) position += static_cast<int>(tree.client.cx);
    if (code == to_start) position = 0;
    if (code == to_end) position = most;
    tree.scroll_x = std::clamp(position, 0, most);
}

}  // namespace headless

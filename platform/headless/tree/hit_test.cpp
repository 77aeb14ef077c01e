// Where the parts of an item lie: indent, button, check box (state image), picture, text, and what is right
// of it.
#include "platform/headless/tree/tree.h"

namespace headless {

namespace {

constexpr int character_width = 6;
constexpr int text_padding = 4;

// Left edges within the window, each also the right edge of the part before it.
struct Parts {
    int button;
    int state_image;
    int image;
    int text;
    int end;
};

int picture_width(HIMAGELIST images) {
    int width = 0;
    int height = 0;
    return images && ImageList_GetIconSize(images, &width, &height) ? width : 0;
}

Parts parts_of(const Tree& tree, const Item& item) {
    const bool room_at_root =
        (tree.window.style & TVS_LINESATROOT) && (tree.window.style & (TVS_HASLINES | TVS_HASBUTTONS));
    const int levels = room_at_root ? item.level : item.level - 1;
    Parts parts;
    parts.button = tree.indent * levels - tree.scroll_x;
    parts.state_image = parts.button + tree.indent;
    parts.image = parts.state_image + (state_image(item) ? picture_width(tree.state_images) : 0);
    parts.text = parts.image + picture_width(tree.normal_images);
    parts.end = parts.text + text_width(item);
    return parts;
}

UINT part_at(const Tree& tree, const Item& item, int x) {
    const Parts parts = parts_of(tree, item);
    if (x >= parts.end) return TVHT_ONITEMRIGHT;
    if (x >= parts.text) return TVHT_ONITEMLABEL;
    if (x >= parts.image) return TVHT_ONITEMICON;
    if (x >= parts.state_image) return TVHT_ONITEMSTATEICON;
    // Leaves have the button's zone too.
    if (x >= parts.button && (tree.window.style & TVS_HASBUTTONS)) return TVHT_ONITEMBUTTON;
    return TVHT_ONITEMINDENT;
}

}  // namespace

int text_width(const Item& item) {
    return static_cast<int>(item.text.size()) * character_width + text_padding;
}

void measure(Tree& tree, Item& item) {
    tree.items.set_width(item, parts_of(tree, item).end + tree.scroll_x);
}

void measure_all(Tree& tree) {
    Item& root = tree.items.root();
    for (Item* item = root.first_child; item; item = next_in_branch(*item, root)) measure(tree, *item);
}

HTREEITEM hit_test(Tree& tree, TVHITTESTINFO& test) {
    test.hItem = nullptr;
    test.flags = 0;
    // The pixels right behind the edges count as inside, as in the real control.
    if (test.pt.x < 0)
        test.flags |= TVHT_TOLEFT;
    else if (test.pt.x > tree.client.cx)
        test.flags |= TVHT_TORIGHT;
    if (test.pt.y < 0)
        test.flags |= TVHT_ABOVE;
    else if (test.pt.y > tree.client.cy)
        test.flags |= TVHT_BELOW;
    if (test.flags) return nullptr;
    test.flags = TVHT_NOWHERE;
    if (!tree.first_visible) return nullptr;
    const int row = row_of(tree, *tree.first_visible) + static_cast<int>(test.pt.y) / tree.row_height;
    Item* item = row_at(tree, row);
    if (!item) return nullptr;
    test.flags = part_at(tree, *item, test.pt.x);
    test.hItem = item->handle;
    return item->handle;
}

bool item_rect(Tree& tree, HTREEITEM handle, bool text_only, RECT& rect) {
    Item* item = tree.items.find(handle);
    if (!item || !item->shown) return false;
    const int top = (row_of(tree, *item) - row_of(tree, *tree.first_visible)) * tree.row_height;
    // One pixel less than the row, as the real control answers.
    rect = {0, top, tree.client.cx, top + tree.row_height - 1};
    if (!text_only) return true;
    const Parts parts = parts_of(tree, *item);
    rect.left = parts.text;
    rect.right = parts.end;
    return true;
}

}  // namespace headless

// A tree view: its items, what is scrolled into view, the selection, and what it tells its parent.
//
// The work is spread over files by topic: editing.cpp (insert, delete, get and set), expansion.cpp,
// selection.cpp, scrolling.cpp, hit_test.cpp (where the parts of an item lie), input.cpp (mouse and keys),
// notices.cpp (what the parent is told) and procedure.cpp (the messages).
//
// A parent may do anything while it is told something: delete the item, or the whole tree. So every
// function looks up its items again, by their handles, after each notice; the Tree itself lives until the
// message is done.
#pragma once

#include "platform/headless/desk.h"
#include "platform/headless/tree/items.h"

namespace headless {

struct Tree : ControlState {
    explicit Tree(Window& own_window) : window(own_window) {}

    Window& window;
    Items items;
    Item* first_visible = nullptr;  // the row at the top; null in an empty tree
    Item* selected = nullptr;
    Item* drop_target = nullptr;
    int scroll_x = 0;
    int indent = 19;
    int row_height = 16;
    HIMAGELIST normal_images = nullptr;
    HIMAGELIST state_images = nullptr;
    SIZE client = {0, 0};
    bool updating_bars = false;
    bool redraw = true;
    WPARAM font = 0;
};

// --- editing.cpp ---
HTREEITEM insert_item(Tree& tree, const TVINSERTSTRUCTW& insert);
bool delete_item(Tree& tree, HTREEITEM handle);
void delete_children(Tree& tree, Item& parent);
bool get_item(Tree& tree, TVITEMW& record);
bool set_item(Tree& tree, const TVITEMW& record);

// --- expansion.cpp ---
enum class Cause { program, user };
bool expand(Tree& tree, HTREEITEM handle, Cause cause);
bool collapse(Tree& tree, HTREEITEM handle, Cause cause, bool reset = false);
bool toggle(Tree& tree, HTREEITEM handle, Cause cause);
// The plus key of a whole branch.
void expand_branch(Tree& tree, HTREEITEM handle);

// --- selection.cpp ---
bool select(Tree& tree, HTREEITEM handle, UINT cause);
// Without a word to the parent.
void select_silently(Tree& tree, Item* item);

// --- scrolling.cpp ---
int visible_count(const Tree& tree);
Item* row_at(Tree& tree, int index);
int row_of(Tree& tree, const Item& item);
// Puts an item at the top, but never scrolls past the last page.
void set_first_visible(Tree& tree, Item* item);
// Expands what hides the item and scrolls to it. True if it scrolled, whatever it expanded.
bool ensure_visible(Tree& tree, HTREEITEM handle);
void update_scroll_bars(Tree& tree);
void scroll_vertically(Tree& tree, int code);
void scroll_rows(Tree& tree, int rows);
void scroll_horizontally(Tree& tree, int code);

// --- hit_test.cpp ---
int text_width(const Item& item);
void measure(Tree& tree, Item& item);
void measure_all(Tree& tree);
HTREEITEM hit_test(Tree& tree, TVHITTESTINFO& test);
bool item_rect(Tree& tree, HTREEITEM handle, bool text_only, RECT& rect);

// --- input.cpp ---
LRESULT button_down(Tree& tree, POINT point);
LRESULT double_click(Tree& tree, POINT point);
LRESULT key_down(Tree& tree, WPARAM key);

// --- notices.cpp ---
LRESULT notify(Tree& tree, UINT code);
// Nonzero: the parent refuses what is about to happen.
LRESULT notify_change(Tree& tree, UINT code, UINT action, const Item* before, const Item* now);
LRESULT notify_key(Tree& tree, WPARAM key);
// Fills in what the parent keeps for itself.
void ask_parent(Tree& tree, const Item& item, TVITEMW& record);

}  // namespace headless

// The items of one tree view, and which of them are shown as rows.
//
// Items hang below an invisible root. An item is shown when all its parents are expanded; the shown ones
// stand, from top to bottom, in Rows. Structure and rows change together here, nowhere else, so that the two
// always agree.
//
// Costs, for n items: inserting at the end, changing a state, and finding by handle take constant or
// logarithmic time; showing or hiding a branch takes time in proportion to the rows that come or go.
#pragma once

#include <string>
#include <unordered_map>

#include "platform/headless/include/commctrl.h"
#include "platform/headless/include/windows.h"
#include "platform/headless/tree/rows.h"

namespace headless {

struct Item : Row {
    HTREEITEM handle = nullptr;
    Item* parent = nullptr;
    Item* first_child = nullptr;
    Item* last_child = nullptr;
    Item* previous = nullptr;
    Item* next = nullptr;
    int level = -1;  // 0 for the topmost items, -1 for the root
    std::u16string text;
    bool text_callback = false;
    UINT state = 0;
    int image = 0;
    int selected_image = 0;
    int children = 0;  // as the owner says: none, some, or I_CHILDRENCALLBACK
    LPARAM data = 0;
};

class Items {
public:
    Items();

    Item& root() { return root_; }
    Rows& rows() { return rows_; }
    int count() const { return static_cast<int>(by_handle_.size()); }

    // Null for an unknown handle, and for the root's names.
    Item* find(HTREEITEM handle);

    // Makes a child after the given sibling, or the first one. Its width must be set by whoever knows it.
    Item& insert(Item& parent, Item* after);
    // Takes a childless item out.
    void remove(Item& item);

    void expand(Item& item);
    void collapse(Item& item);

    void set_width(Item& item, int width);

private:
    bool shows_children(const Item& item) const;
    Item* last_row_within(Item& item);

    Item root_;
    Rows rows_;
    std::unordered_map<HTREEITEM, Item> by_handle_;
};

inline bool is_expanded(const Item& item) {
    return (item.state & TVIS_EXPANDED) != 0;
}

inline UINT state_image(const Item& item) {
    return (item.state & TVIS_STATEIMAGEMASK) >> 12;
}

// The item itself or one below it.
bool is_within(const Item& item, const Item& ancestor);

// The next item in pre-order that is not below the given one, within the branch; null at its end.
Item* after_branch(Item& item, const Item& branch);
// The next item in pre-order within the branch, shown or not.
Item* next_in_branch(Item& item, const Item& branch);

}  // namespace headless

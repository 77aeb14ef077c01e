#include "platform/headless/tree/items.h"

#include <vector>

namespace headless {

namespace {

// Handles of all trees come from one counter: an item of another tree is unknown here.
HTREEITEM next_handle() {
    static std::uintptr_t last = 0x100000;
    return reinterpret_cast<HTREEITEM>(last += 16);
}

}  // namespace

Items::Items() {
    root_.handle = TVI_ROOT;
    root_.state = TVIS_EXPANDED;
}

Item* Items::find(HTREEITEM handle) {
    auto found = by_handle_.find(handle);
    return found == by_handle_.end() ? nullptr : &found->second;
}

bool Items::shows_children(const Item& item) const {
    return &item == &root_ || (item.shown && is_expanded(item));
}

// The last row that stands below the item, or its own.
Item* Items::last_row_within(Item& item) {
    Item* last = &item;
    while (last->last_child && shows_children(*last)) last = last->last_child;
    return last;
}

Item& Items::insert(Item& parent, Item* after) {
    // The row above the new one, found before the item is linked.
    Row* above = after ? last_row_within(*after) : (&parent == &root_ ? nullptr : &parent);
    const HTREEITEM handle = next_handle();
    Item& item = by_handle_[handle];
    item.handle = handle;
    item.parent = &parent;
    item.level = parent.level + 1;
    item.previous = after;
    item.next = after ? after->next : parent.first_child;
    (item.next ? item.next->previous : parent.last_child) = &item;
    (after ? after->next : parent.first_child) = &item;
    if (shows_children(parent)) rows_.insert(above, item);
    return item;
}

void Items::remove(Item& item) {
    if (item.shown) rows_.remove(item, 1);
    (item.previous ? item.previous->next : item.parent->first_child) = item.next;
    (item.next ? item.next->previous : item.parent->last_child) = item.previous;
    const HTREEITEM handle = item.handle;
    by_handle_.erase(handle);
}

void Items::expand(Item& item) {
    if (is_expanded(item)) return;
    item.state |= TVIS_EXPANDED;
    if (!item.shown) return;
    rows_.insert_run(&item, item.first_child, [&item](Row& above) -> Row* {
        auto& row = static_cast<Item&>(above);
        return is_expanded(row) ? next_in_branch(row, item) : after_branch(row, item);
    });
}

void Items::collapse(Item& item) {
    if (!is_expanded(item)) return;
    if (item.shown && item.first_child) {
        const int first = rows_.index(item) + 1;
        const int last = rows_.index(*last_row_within(item));
        rows_.remove(*item.first_child, last - first + 1);
    }
    item.state &= ~TVIS_EXPANDED;
}

void Items::set_width(Item& item, int width) {
    if (item.width == width) return;
    item.width = width;
    if (item.shown) rows_.width_changed(item);
}

bool is_within(const Item& item, const Item& ancestor) {
    for (const Item* level = &item; level; level = level->parent)
        if (level == &ancestor) return true;
    return false;
}

Item* after_branch(Item& item, const Item& branch) {
    for (Item* level = &item; level && level != &branch; level = level->parent)
        if (level->next) return level->next;
    return nullptr;
}

Item* next_in_branch(Item& item, const Item& branch) {
    return item.first_child ? item.first_child : after_branch(item, branch);
}

}  // namespace headless

#include "platform/headless/tree/rows.h"

#include <algorithm>

namespace headless {

void Rows::update(Row& row) {
    row.count_ = 1;
    row.widest_ = row.width;
    for (Row* side : {row.left_, row.right_}) {
        if (!side) continue;
        side->up_ = &row;
        row.count_ += side->count_;
        row.widest_ = std::max(row.widest_, side->widest_);
    }
}

Row* Rows::merge(Row* upper, Row* lower) {
    if (!upper) return lower;
    if (!lower) return upper;
    if (upper->priority_ > lower->priority_) {
        upper->right_ = merge(upper->right_, lower);
        update(*upper);
        return upper;
    }
    lower->left_ = merge(upper, lower->left_);
    update(*lower);
    return lower;
}

// The first `count` rows go to `upper`.
void Rows::split(Row* rows, int count, Row*& upper, Row*& lower) {
    if (!rows) {
        upper = lower = nullptr;
        return;
    }
    rows->up_ = nullptr;
    if (Rows::count(rows->left_) >= count) {
        Row* rest = nullptr;
        split(rows->left_, count, upper, rest);
        rows->left_ = rest;
        lower = rows;
    } else {
        Row* rest = nullptr;
        split(rows->right_, count - Rows::count(rows->left_) - 1, rest, lower);
        rows->right_ = rest;
        upper = rows;
    }
    update(*rows);
    if (upper) upper->up_ = nullptr;
    if (lower) lower->up_ = nullptr;
}

int Rows::index(const Row& row) const {
    int above = count(row.left_);
    for (const Row* level = &row; level->up_; level = level->up_)
        if (level->up_->right_ == level) above += count(level->up_->left_) + 1;
    return above;
}

Row* Rows::at(int index) const {
    if (index < 0 || index >= count()) return nullptr;
    Row* row = root_;
    for (;;) {
        const int above = count(row->left_);
        if (index == above) return row;
        if (index < above) {
            row = row->left_;
        } else {
            index -= above + 1;
            row = row->right_;
        }
    }
}

void Rows::prepare(Row& row) {
    random_ ^= random_ << 13;
    random_ ^= random_ >> 17;
    random_ ^= random_ << 5;
    row.priority_ = random_;
    row.shown = true;
    row.left_ = row.right_ = row.up_ = nullptr;
    update(row);
}

// A run is built from top to bottom: `last` is its lowest row, above which those that may still get rows below
// them stand in a chain. What leaves the chain is complete.
Row* Rows::append(Row* last, Row& row) {
    prepare(row);
    Row* before = nullptr;
    while (last && last->priority_ <= row.priority_) {
        update(*last);
        before = last;
        last = last->up_;
    }
    row.left_ = before;
    row.up_ = last;
    if (last) last->right_ = &row;
    return &row;
}

Row* Rows::finish(Row& last) {
    Row* top = &last;
    for (Row* level = &last; level; level = level->up_) {
        update(*level);
        top = level;
    }
    return top;
}

void Rows::place(Row* above, Row& run) {
    Row* upper = nullptr;
    Row* lower = nullptr;
    split(root_, above ? index(*above) + 1 : 0, upper, lower);
    root_ = merge(merge(upper, &run), lower);
    root_->up_ = nullptr;
}

void Rows::insert(Row* above, Row& row) {
    prepare(row);
    place(above, row);
}

void Rows::remove_one(Row& row) {
    Row* rest = merge(row.left_, row.right_);
    Row* up = row.up_;
    if (rest) rest->up_ = up;
    (up ? up->left_ == &row ? up->left_ : up->right_ : root_) = rest;
    for (Row* level = up; level; level = level->up_) update(*level);
    row.left_ = row.right_ = row.up_ = nullptr;
    row.shown = false;
}

void Rows::remove(Row& first, int count) {
    if (count == 1) return remove_one(first);
    Row* upper = nullptr;
    Row* middle = nullptr;
    Row* lower = nullptr;
    Row* rest = nullptr;
    split(root_, index(first), upper, rest);
    split(rest, count, middle, lower);
    forget(middle);
    root_ = merge(upper, lower);
    if (root_) root_->up_ = nullptr;
}

// The depth is logarithmic.
void Rows::forget(Row* rows) {
    if (!rows) return;
    forget(rows->left_);
    forget(rows->right_);
    rows->left_ = rows->right_ = rows->up_ = nullptr;
    rows->shown = false;
}

void Rows::width_changed(Row& row) {
    for (Row* level = &row; level; level = level->up_) update(*level);
}

}  // namespace headless

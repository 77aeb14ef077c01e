// The shown items of a tree view from top to bottom: which one stands at a row, at which row one stands, and
// how wide the widest is.
//
// A balanced tree over the order (a treap, ordered by position): every operation takes logarithmic time, so
// that filling and expanding a tree of any size never counts its rows anew.
#pragma once

#include <cstdint>

namespace headless {

// What an item brings along to stand in the order.
struct Row {
    bool shown = false;
    int width = 0;  // the pixels from the content's left edge to the end of the text

private:
    friend class Rows;
    Row* left_ = nullptr;
    Row* right_ = nullptr;
    Row* up_ = nullptr;
    int count_ = 1;
    int widest_ = 0;
    std::uint32_t priority_ = 0;
};

class Rows {
public:
    int count() const { return count(root_); }
    // Of all rows; 0 when there are none.
    int widest() const { return root_ ? root_->widest_ : 0; }

    // The item must be shown.
    int index(const Row& row) const;
    // Null outside 0 … count() - 1.
    Row* at(int index) const;

    // Below the given row, at the very top for null.
    void insert(Row* above, Row& row);
    // A run of rows that `next` leads through; null ends it. Takes time in proportion to the run.
    template <class Next>
    void insert_run(Row* above, Row* first, Next next) {
        Row* last = nullptr;
        for (Row* row = first; row; row = next(*row)) last = append(last, *row);
        if (last) place(above, *finish(*last));
    }
    // This row and the ones below it, `count` in all.
    void remove(Row& first, int count);
    void width_changed(Row& row);

private:
    static int count(const Row* row) { return row ? row->count_ : 0; }
    static void update(Row& row);
    static Row* merge(Row* upper, Row* lower);
    static void split(Row* rows, int count, Row*& upper, Row*& lower);
    static void forget(Row* rows);
    void prepare(Row& row);
    Row* append(Row* last, Row& row);
    static Row* finish(Row& last);
    void place(Row* above, Row& run);
    void remove_one(Row& row);

    Row* root_ = nullptr;
    std::uint32_t random_ = 2463534242u;
};

}  // namespace headless

// ABoxTree: which boxes lie at a place. A packed R-tree: made once for all boxes, never changed.
//
//     ABoxTree tree(boxes);
//     std::vector<std::uint32_t> found;
//     tree.find(ABox::around(area), found);   // the numbers of the boxes that touch the area, ascending
//
// The boxes are put in the order of a Hilbert curve, sixteen to a node, sixteen nodes to the next: about 22 bytes
// for a box, filled in one pass over the sorted boxes.
#pragma once

#include <cstdint>
#include <vector>

#include "kzutil/rect.h"

// Edges included; an inverted box touches nothing.
struct ABox {
    float left = 1, top = 1, right = -1, bottom = -1;

    // The smallest box of floats around a rectangle; everything where a coordinate is no number.
    static ABox around(const AFRect& rect);
    static ABox everything();

    bool isEmpty() const { return !(left <= right && top <= bottom); }
    bool touches(const ABox& other) const {
        return left <= other.right && other.left <= right && top <= other.bottom && other.top <= bottom;
    }
    bool contains(const ABox& other) const {
        return left <= other.left && top <= other.top && right >= other.right && bottom >= other.bottom;
    }
    void add(const ABox& other);
    AFRect rect() const { return {left, top, right, bottom}; }
    friend bool operator==(const ABox&, const ABox&) = default;
};

class ABoxTree {
public:
    ABoxTree() = default;
    // Box i has the number i. Raises bad_alloc.
    explicit ABoxTree(const std::vector<ABox>& boxes);

    // Replaces `found` by the numbers of the boxes that touch the area, ascending.
    void find(const ABox& area, std::vector<std::uint32_t>& found) const;
    // Around all boxes.
    const ABox& bounds() const { return m_bounds; }
    std::size_t bytes() const;

private:
    static constexpr std::size_t kFanOut = 16;

    void collect(std::size_t level, std::size_t first, std::size_t end, const ABox& area,
                 std::vector<std::uint32_t>& found) const;

    std::size_t m_count = 0;             // of all boxes, the empty ones included
    std::vector<std::uint32_t> m_order;  // the numbers of the boxes of the lowest level
    // The lowest level first; node i of a level lies around the nodes from 16 i on of the level below.
    std::vector<std::vector<ABox>> m_levels;
    ABox m_bounds;
};

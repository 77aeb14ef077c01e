#include "kzcore/display/box_tree.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>
#include <numeric>

namespace {

constexpr float kLargestFloat = std::numeric_limits<float>::max();

float atMost(double value) {
    if (std::isnan(value)) return -kLargestFloat;
    const auto nearest = static_cast<float>(std::clamp<double>(value, -kLargestFloat, kLargestFloat));
    return nearest > value ? std::nextafter(nearest, -kLargestFloat) : nearest;
}

// The place on a Hilbert curve through 2^16 by 2^16 cells.
std::uint32_t hilbert(std::uint32_t x, std::uint32_t y) {
    std::uint32_t place = 0;
    for (std::uint32_t side = 1U << 15; side > 0; side /= 2) {
        const std::uint32_t right = (x & side) != 0 ? 1 : 0;
        const std::uint32_t lower = (y & side) != 0 ? 1 : 0;
        place = place * 4 + ((3 * right) ^ lower);
        if (lower == 0) {
            if (right == 1) {
                x = 0xffff - x;
                y = 0xffff - y;
            }
            std::swap(x, y);
        }
    }
    return place;
}

struct Placed {
    std::uint32_t place;
    std::uint32_t number;
};

// By place, in linear time.
void sortByPlace(std::vector<Placed>& boxes) {
    constexpr unsigned kBits = 11;
    constexpr std::uint32_t kMask = (1U << kBits) - 1;
    std::vector<Placed> other(boxes.size());
    for (unsigned shift = 0; shift < 32; shift += kBits) {
        std::array<std::size_t, kMask + 1> starts{};
        for (const Placed& one : boxes) ++starts[one.place >> shift & kMask];
        std::exclusive_scan(starts.begin(), starts.end(), starts.begin(), std::size_t{0});
        for (const Placed& one : boxes) other[starts[one.place >> shift & kMask]++] = one;
        boxes.swap(other);
    }
}

std::vector<Placed> placesOf(const std::vector<ABox>& boxes, const ABox& bounds) {
    std::vector<Placed> placed;
    placed.reserve(boxes.size());
    const auto cell = [](double low, double high, double from, double to) {
        const double share = to > from ? ((low + high) / 2 - from) / (to - from) : 0;
        return static_cast<std::uint32_t>(std::clamp(share, 0.0, 1.0) * 0xffff);
    };
    for (std::size_t i = 0; i < boxes.size(); ++i) {
        const ABox& box = boxes[i];
        if (box.isEmpty()) continue;
        const std::uint32_t x = cell(box.left, box.right, bounds.left, bounds.right);
        const std::uint32_t y = cell(box.top, box.bottom, bounds.top, bounds.bottom);
        placed.push_back({hilbert(x, y), static_cast<std::uint32_t>(i)});
    }
    return placed;
}

}  // namespace

ABox ABox::around(const AFRect& rect) {
    return {atMost(rect.left), atMost(rect.top), -atMost(-rect.right), -atMost(-rect.bottom)};
}

ABox ABox::everything() {
    return {-kLargestFloat, -kLargestFloat, kLargestFloat, kLargestFloat};
}

void ABox::add(const ABox& other) {
    if (other.isEmpty()) return;
    if (isEmpty()) {
        *this = other;
        return;
    }
    left = std::min(left, other.left);
    top = std::min(top, other.top);
    right = std::max(right, other.right);
    bottom = std::max(bottom, other.bottom);
}

ABoxTree::ABoxTree(const std::vector<ABox>& boxes) : m_count(boxes.size()) {
    for (const ABox& box : boxes) m_bounds.add(box);
    std::vector<Placed> placed = placesOf(boxes, m_bounds);
    sortByPlace(placed);
    m_order.reserve(placed.size());
    m_levels.emplace_back().reserve(placed.size());
    for (const Placed& one : placed) {
        m_order.push_back(one.number);
        m_levels.back().push_back(boxes[one.number]);
    }
    while (m_levels.back().size() > 1) {
        const std::vector<ABox>& below = m_levels.back();
        std::vector<ABox> level((below.size() + kFanOut - 1) / kFanOut);
        for (std::size_t i = 0; i < below.size(); ++i) level[i / kFanOut].add(below[i]);
        m_levels.push_back(std::move(level));
    }
}

void ABoxTree::find(const ABox& area, std::vector<std::uint32_t>& found) const {
    found.clear();
    if (m_order.empty() || area.isEmpty() || !area.touches(m_bounds)) return;
    if (area.contains(m_bounds) && m_order.size() == m_count) {
        found.resize(m_count);
        std::iota(found.begin(), found.end(), 0U);
        return;
    }
    collect(m_levels.size() - 1, 0, m_levels.back().size(), area, found);
    std::sort(found.begin(), found.end());
}

void ABoxTree::collect(std::size_t level, std::size_t first, std::size_t end, const ABox& area,
                       std::vector<std::uint32_t>& found) const {
    const std::vector<ABox>& boxes = m_levels[level];
    for (std::size_t i = first; i < end; ++i) {
        if (!boxes[i].touches(area)) continue;
        if (level == 0) {
            found.push_back(m_order[i]);
            continue;
        }
        const std::size_t below = m_levels[level - 1].size();
        collect(level - 1, i * kFanOut, std::min(below, (i + 1) * kFanOut), area, found);
    }
}

std::size_t ABoxTree::bytes() const {
    std::size_t bytes = m_order.capacity() * sizeof m_order[0];
    for (const std::vector<ABox>& level : m_levels) bytes += level.capacity() * sizeof level[0];
    return bytes;
}

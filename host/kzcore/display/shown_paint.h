// AShownPaint: which fills and strokes of a display list a view shows, a bit for each.
//
//     const AShownPaint all;                                  // everything
//     const AShownPaint shown(list, [&](AReferItem* item) { return filter->isVisible(item) != 0; });
//     if (shown.of(number).stroke) …
//
// The filter is asked once about every item. Any number of threads may read it.
#pragma once

#include <functional>

#include "kzcore/display/display_list.h"

class AShownPaint {
public:
    AShownPaint() = default;
    // Raises bad_alloc, and what `asks` raises.
    AShownPaint(const ADisplayList& list, const std::function<bool(AReferItem*)>& asks);

    // An object that has paint and shows none of it shows nothing; what it does not have counts as shown.
    APaintVisibility of(std::uint32_t object) const {
        if (object >= m_bits.size()) return {};
        return {(m_bits[object] & kFill) != 0, (m_bits[object] & kStroke) != 0};
    }
    bool shows(std::uint32_t object) const { return object >= m_bits.size() || m_bits[object] != 0; }

    // What a change from this to the other one touches: boxes of entries that show more or less than before.
    std::vector<ABox> changes(const ADisplayList& list, const AShownPaint& other) const;

private:
    static constexpr std::uint8_t kFill = 1, kStroke = 2, kBoth = 3;

    std::vector<std::uint8_t> m_bits;  // by the object's number; none: everything shows
};

// Rectangles of whole pixels.
#pragma once

#include <algorithm>
#include <cmath>

#include "kzutil/affine.h"
#include "platform/winapi.h"

namespace svg {

// Far beyond every picture, and within the range of pixel numbers.
constexpr double kFarPixels = 1e9;

inline bool isEmpty(const RECT& area) {
    return area.left >= area.right || area.top >= area.bottom;
}

inline RECT intersection(const RECT& a, const RECT& b) {
    return {std::max(a.left, b.left), std::max(a.top, b.top), std::min(a.right, b.right),
            std::min(a.bottom, b.bottom)};
}

// The pixels that a box touches, with a margin all around. Clamps to kFarPixels, infinite edges included.
inline RECT pixelsAround(const AFRect& box, double margin) {
    const auto cut = [](double value, double otherwise) {
        return static_cast<LONG>(std::isfinite(value) ? std::clamp(value, -kFarPixels, kFarPixels)
                                                      : otherwise);
    };
    return {cut(std::floor(box.left - margin), -kFarPixels), cut(std::floor(box.top - margin), -kFarPixels),
            cut(std::ceil(box.right + margin), kFarPixels), cut(std::ceil(box.bottom + margin), kFarPixels)};
}

}  // namespace svg

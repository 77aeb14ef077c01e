// The sizes that image files may have.
#pragma once

#include <algorithm>
#include <cstdint>

#include "canvas/image.h"

// A few bytes must not make us take gigabytes: no image is larger than its bytes can tell of. `mostPixels`:
// as many as the file's bytes can hold.
inline bool isPlausible(std::uint64_t width, std::uint64_t height, std::uint64_t mostPixels) {
    constexpr std::uint64_t kLongestSide = 0x7fffffff;
    return width > 0 && height > 0 && width <= kLongestSide && height <= kLongestSide &&
           width * height <= std::min<std::uint64_t>(mostPixels, AImage::kMostPixels);
}

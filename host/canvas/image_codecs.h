// The kinds of image files, each read in a file of its own: image_png.cpp, image_jpeg.cpp.
#pragma once

#include <algorithm>
#include <cstdint>

#include "canvas/image.h"

// Empty for damaged bytes. Both raise bad_alloc.
AImage decodePng(std::span<const unsigned char> bytes);
AImage decodeJpeg(std::span<const unsigned char> bytes);

// product / 255, rounded to the nearest, for products of two bytes.
inline std::uint32_t divideBy255(std::uint32_t product) {
    return (product + 128 + ((product + 128) >> 8)) >> 8;
}

// Rejects dimensions that the compressed size cannot justify (decompression bombs). `mostPixels`: as many as the
// file's bytes can hold.
inline bool isPlausible(std::uint64_t width, std::uint64_t height, std::uint64_t mostPixels) {
    constexpr std::uint64_t kLongestSide = 0x7fffffff;
    return width > 0 && height > 0 && width <= kLongestSide && height <= kLongestSide &&
           width * height <= std::min<std::uint64_t>(mostPixels, AImage::kMostPixels);
}

// The kinds of image files, each read in a file of its own: image_png.cpp, image_jpeg.cpp, image_gif.cpp,
// image_webp.cpp.
#pragma once

#include <algorithm>
#include <cstdint>

#include "canvas/image.h"

// Empty for damaged bytes. All raise bad_alloc.
AImage decodePng(std::span<const unsigned char> bytes);
AImage decodeJpeg(std::span<const unsigned char> bytes);
AImage decodeGif(std::span<const unsigned char> bytes);
AImage decodeWebp(std::span<const unsigned char> bytes);

// product / 255, rounded to the nearest, for products of two bytes.
inline std::uint32_t divideBy255(std::uint32_t product) {
    return (product + 128 + ((product + 128) >> 8)) >> 8;
}

// So many pixels a file may ask for whatever its size, in formats where pixels can take no bytes at all.
constexpr std::uint64_t kPlainPixels = std::uint64_t{1} << 22;

// Rejects dimensions that the compressed size cannot justify (decompression bombs). `mostPixels`: as many as the
// file's bytes can hold.
inline bool isPlausible(std::uint64_t width, std::uint64_t height, std::uint64_t mostPixels) {
    constexpr std::uint64_t kLongestSide = 0x7fffffff;
    return width > 0 && height > 0 && width <= kLongestSide && height <= kLongestSide &&
           width * height <= std::min<std::uint64_t>(mostPixels, AImage::kMostPixels);
}

// Mixing pixels as AImage keeps them: 0xAARRGGBB, the colour multiplied by its alpha.
//
//     below = over(scaledPixel(above, coverage), below);   // `coverage` from 0 to 255
#pragma once

#include <cstdint>

// a * b / 255, rounded; for both of the bytes of 0x00XX00YY at once.
inline std::uint32_t scaledBytes(std::uint32_t bytes, std::uint32_t factor) {
    const std::uint32_t product = bytes * factor + 0x800080;
    return (product + (product >> 8 & 0xff00ff)) >> 8 & 0xff00ff;
}

// The pixel with `factor` 255ths of its opacity.
inline std::uint32_t scaledPixel(std::uint32_t pixel, std::uint32_t factor) {
    return scaledBytes(pixel >> 8 & 0xff00ff, factor) << 8 | scaledBytes(pixel & 0xff00ff, factor);
}

inline std::uint32_t over(std::uint32_t above, std::uint32_t below) {
    const std::uint32_t alpha = above >> 24;
    if (alpha == 255) return above;
    // No byte overflows: none of a multiplied pixel is larger than its alpha.
    return above + scaledPixel(below, 255 - alpha);
}

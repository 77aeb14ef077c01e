// The components of a pixel of an image.
#pragma once

#include <algorithm>
#include <cstdint>

namespace svg {

constexpr unsigned alphaOfPixel(std::uint32_t pixel) {
    return pixel >> 24;
}
constexpr unsigned redOf(std::uint32_t pixel) {
    return pixel >> 16 & 0xff;
}
constexpr unsigned greenOf(std::uint32_t pixel) {
    return pixel >> 8 & 0xff;
}
constexpr unsigned blueOf(std::uint32_t pixel) {
    return pixel & 0xff;
}
constexpr std::uint32_t pixelOf(unsigned red, unsigned green, unsigned blue, unsigned alpha) {
    return alpha << 24 | red << 16 | green << 8 | blue;
}

// The product of two components from 0 to 255, rounded.
constexpr unsigned multiplied(unsigned a, unsigned b) {
    const unsigned product = a * b + 128;
    return (product + (product >> 8)) >> 8;
}
// A component without its alpha, which is not 0.
constexpr unsigned divided(unsigned component, unsigned alpha) {
    return std::min(255u, (component * 255 + alpha / 2) / alpha);
}

// 0 to 1 as a component; not-a-number is 0.
inline unsigned componentOf(double value) {
    return value >= 1 ? 255 : value > 0 ? static_cast<unsigned>(value * 255 + 0.5) : 0;
}

// A pixel from components that are not multiplied.
constexpr std::uint32_t multipliedPixel(unsigned red, unsigned green, unsigned blue, unsigned alpha) {
    return pixelOf(multiplied(red, alpha), multiplied(green, alpha), multiplied(blue, alpha), alpha);
}

}  // namespace svg

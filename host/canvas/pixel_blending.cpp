#include "canvas/pixel_blending.h"

#include <algorithm>
#include <array>
#include <cmath>

#include "canvas/pixel_mixing.h"

namespace {

// Red, green and blue from 0 to 1, not multiplied.
using Rgb = std::array<float, 3>;

float blendedComponent(EBlend mode, float top, float bottom) {
    switch (mode) {
        case EBlend::multiply:
            return top * bottom;
        case EBlend::screen:
            return top + bottom - top * bottom;
        case EBlend::overlay:
            return blendedComponent(EBlend::hardLight, bottom, top);
        case EBlend::darken:
            return std::min(top, bottom);
        case EBlend::lighten:
            return std::max(top, bottom);
        case EBlend::colorDodge:
            return bottom <= 0 ? 0 : top >= 1 ? 1 : std::min(1.0f, bottom / (1 - top));
        case EBlend::colorBurn:
            return bottom >= 1 ? 1 : top <= 0 ? 0 : 1 - std::min(1.0f, (1 - bottom) / top);
        case EBlend::hardLight:
            return top <= 0.5f ? 2 * top * bottom : blendedComponent(EBlend::screen, 2 * top - 1, bottom);
        case EBlend::softLight: {
            if (top <= 0.5f) return bottom - (1 - 2 * top) * bottom * (1 - bottom);
            const float curve =
                bottom <= 0.25f ? ((16 * bottom - 12) * bottom + 4) * bottom : std::sqrt(bottom);
            return bottom + (2 * top - 1) * (curve - bottom);
        }
        case EBlend::difference:
            return std::fabs(top - bottom);
        case EBlend::exclusion:
            return top + bottom - 2 * top * bottom;
        default:
            return top;
    }
}

float luminosityOf(const Rgb& color) {
    return 0.3f * color[0] + 0.59f * color[1] + 0.11f * color[2];
}

float saturationOf(const Rgb& color) {
    const auto [least, most] = std::minmax({color[0], color[1], color[2]});
    return most - least;
}

// Moved to that luminosity; what leaves the range is drawn towards the grey of the same luminosity.
Rgb withLuminosity(Rgb color, float luminosity) {
    const float shift = luminosity - luminosityOf(color);
    for (float& component : color) component += shift;
    const auto [least, most] = std::minmax({color[0], color[1], color[2]});
    float factor = 1;
    if (least < 0) factor = luminosity / (luminosity - least);
    if (most > 1) factor = std::min(factor, (1 - luminosity) / (most - luminosity));
    for (float& component : color) component = luminosity + (component - luminosity) * factor;
    return color;
}

Rgb withSaturation(Rgb color, float saturation) {
    const auto [least, most] = std::minmax({color[0], color[1], color[2]});
    if (!(most > least)) return {0, 0, 0};
    for (float& component : color) component = (component - least) * saturation / (most - least);
    return color;
}

Rgb blended(EBlend mode, const Rgb& top, const Rgb& bottom) {
    switch (mode) {
        case EBlend::hue:
            return withLuminosity(withSaturation(top, saturationOf(bottom)), luminosityOf(bottom));
        case EBlend::saturation:
            return withLuminosity(withSaturation(bottom, saturationOf(top)), luminosityOf(bottom));
        case EBlend::color:
            return withLuminosity(top, luminosityOf(bottom));
        case EBlend::luminosity:
            return withLuminosity(bottom, luminosityOf(top));
        default: {
            Rgb mixed{};
            for (std::size_t i = 0; i < mixed.size(); ++i)
                mixed[i] = blendedComponent(mode, top[i], bottom[i]);
            return mixed;
        }
    }
}

// Still multiplied.
Rgb componentsOf(std::uint32_t pixel) {
    const auto component = [&](int shift) { return static_cast<float>(pixel >> shift & 0xff) / 255; };
    return {component(16), component(8), component(0)};
}

Rgb divided(Rgb color, float alpha) {
    for (float& component : color) component = std::min(component / alpha, 1.0f);
    return color;
}

}  // namespace

std::uint32_t blendedPixel(EBlend mode, std::uint32_t top, std::uint32_t bottom) {
    const std::uint32_t above = top >> 24;
    const std::uint32_t below = bottom >> 24;
    if (above == 0) return bottom;
    if (below == 0) return top;
    if (mode == EBlend::normal) return over(top, bottom);
    const float a = static_cast<float>(above) / 255;
    const float b = static_cast<float>(below) / 255;
    const Rgb x = componentsOf(top);
    const Rgb y = componentsOf(bottom);
    const Rgb mixed = blended(mode, divided(x, a), divided(y, b));
    const std::uint32_t alpha = above + below - scaledBytes(above, below);
    std::uint32_t result = alpha;
    for (std::size_t i = 0; i < mixed.size(); ++i) {
        const float value = (1 - a) * y[i] + (1 - b) * x[i] + a * b * mixed[i];
        const auto component = static_cast<std::uint32_t>(std::clamp(value, 0.0f, 1.0f) * 255 + 0.5f);
        // A multiplied component is never more than its alpha.
        result = result << 8 | std::min(component, alpha);
    }
    return result;
}

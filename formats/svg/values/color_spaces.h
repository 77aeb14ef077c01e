// Colour spaces that style sheets name, by way of XYZ with the white of daylight (D65).
#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <string_view>

namespace svg {

// Components as the space has them: rgb spaces 0 to 1; lab L 0 to 100; oklab L 0 to 1; hues in degrees;
// saturation, lightness, whiteness, blackness 0 to 1.
using ColorValues3 = std::array<double, 3>;

enum class ColorSpace : std::uint8_t {
    srgb,
    srgbLinear,
    displayP3,
    a98,
    prophoto,
    rec2020,
    xyz65,
    xyz50,
    lab,
    lch,
    oklab,
    oklch,
    hsl,
    hwb
};

std::optional<ColorSpace> colorSpaceNamed(std::string_view name);
// The component that is a hue; -1: none.
int hueOf(ColorSpace space);

// To sRGB, not cut to its range.
ColorValues3 toSrgb(ColorSpace space, const ColorValues3& values);
ColorValues3 fromSrgb(ColorSpace space, const ColorValues3& srgb);

}  // namespace svg

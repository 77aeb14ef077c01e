// Colours as style sheets write them.
#pragma once

#include <array>
#include <cstdint>
#include <string_view>

namespace svg {

// Reads a keyword, #rgb, #rgba, #rrggbb, #rrggbbaa or a function (rgb, hsl, hwb, lab, lch, oklab, oklch, color,
// color-mix, light-dark) from the front of the text and takes it away, into 0xRRGGBB. Opacity belongs to objects, not to colours: it is told where `alpha` asks
// for it, which keeps its value for a colour without one.
// False, with the text unchanged, for anything else, "currentColor" and "transparent" included.
bool takeColor(std::string_view& text, std::uint32_t& rgb, std::uint8_t* alpha = nullptr);

// Reads device-cmyk(c m y k), components as numbers from 0 to 1 or percentages.
bool takeCmyk(std::string_view& text, std::array<float, 4>& cmyk);
// How a screen shows it.
std::uint32_t cmykToRgb(const std::array<float, 4>& cmyk);

// The value of a colour keyword, in any case; false when it is none.
bool findColorName(std::string_view name, std::uint32_t& rgb);

}  // namespace svg

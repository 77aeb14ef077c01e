// The named colours of CSS Color 4: the 147 of SVG and rebeccapurple.
#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>

struct ANamedColor {
    std::string_view name;  // lower case
    std::uint32_t value;    // 0xRRGGBB
};

// Sorted by name.
std::span<const ANamedColor> namedColors();

// By name, lower case.
std::optional<std::uint32_t> findNamedColor(std::string_view name);

// What a value is called: its CSS name (of several the one spelled gray, cyan or magenta), else "#rrggbb".
std::string canonicalColorName(std::uint32_t value);

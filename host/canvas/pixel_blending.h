// Blend modes: how the colours of a picture mix with those below it. One place for canvases and filters.
//
//     below = blendedPixel(EBlend::screen, above, below);
//
// Pixels are those of AImage: 0xAARRGGBB, the colour multiplied by its alpha. What lies on nothing keeps its
// colour, whatever the mode is.
#pragma once

#include <cstdint>

enum class EBlend : std::uint8_t {
    normal,
    multiply,
    screen,
    overlay,
    darken,
    lighten,
    colorDodge,
    colorBurn,
    hardLight,
    softLight,
    difference,
    exclusion,
    // These mix hue, saturation and luminosity, not one component after the other.
    hue,
    saturation,
    color,
    luminosity,
};

std::uint32_t blendedPixel(EBlend mode, std::uint32_t top, std::uint32_t bottom);

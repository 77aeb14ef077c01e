// Every blend mode with its name in drawings.
#pragma once

#include "canvas/pixel_blending.h"

namespace test {

struct BlendMode {
    const char* name;
    EBlend mode;
};

inline constexpr BlendMode kBlendModes[] = {{"normal", EBlend::normal},
                                            {"multiply", EBlend::multiply},
                                            {"screen", EBlend::screen},
                                            {"overlay", EBlend::overlay},
                                            {"darken", EBlend::darken},
                                            {"lighten", EBlend::lighten},
                                            {"color-dodge", EBlend::colorDodge},
                                            {"color-burn", EBlend::colorBurn},
                                            {"hard-light", EBlend::hardLight},
                                            {"soft-light", EBlend::softLight},
                                            {"difference", EBlend::difference},
                                            {"exclusion", EBlend::exclusion},
                                            {"hue", EBlend::hue},
                                            {"saturation", EBlend::saturation},
                                            {"color", EBlend::color},
                                            {"luminosity", EBlend::luminosity}};

}  // namespace test

// Light on a picture whose alpha is a height: feDiffuseLighting and feSpecularLighting.
#pragma once

#include "formats/svg/draw/filter/filter_pixels.h"

namespace svg {

struct Vector3 {
    double x = 0, y = 0, z = 0;
};

struct Light {
    enum class Kind : std::uint8_t { distant, point, spot };
    Kind kind = Kind::distant;
    Vector3 toLight{0, 0, 1};  // of a distant one, of length 1
    Vector3 at;                // in the image's pixels
    Vector3 target;            // of a spot
    double focus = 1;          // its exponent
    double coneCosine = -1;    // of the angle beyond which a spot gives no light

    bool specular = false;
    double strength = 1;      // the constant of the surface
    double shininess = 1;     // the exponent of a specular one
    double surfaceScale = 1;  // height of what is opaque, in pixels
    ColorValues color{1, 1, 1, 1};
};

// The light alone: opaque for a diffuse surface, as opaque as it is bright for a specular one.
AImage lightImage(const AImage& image, const Light& light);

}  // namespace svg

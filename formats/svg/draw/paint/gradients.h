// Linear and radial gradients as the canvas takes them.
#pragma once

#include "formats/svg/draw/context/bounding_box.h"

namespace svg {

// The gradient for an element of that bounding box and user space; null when it paints nothing (no stops, or
// it is measured in a box without area). It is the cache's and stays until the next call.
const AGradient* gradientFor(DrawContext& context, pugi::xml_node gradient, BoundingBox& box,
                             const UserSpace& space);

// The opacity of the one stop that makes a gradient a plain colour.
double swatchOpacity(DrawContext& context, pugi::xml_node gradient);

}  // namespace svg

// Outlines of round shapes.
#pragma once

#include <array>

#include "canvas/path.h"

namespace svg {

// Nothing where a radius is not positive.
void appendEllipse(AFPoint center, double rx, double ry, APath& path);

// The radii of a rectangle's corners, clockwise from the upper left one.
using CornerRadii = std::array<AFPoint, 4>;
// Corners with a radius of 0 are sharp. The radii must fit into the box.
void appendRectangle(const AFRect& box, const CornerRadii& radii, APath& path);
inline void appendRectangle(const AFRect& box, double rx, double ry, APath& path) {
    const AFPoint radius{rx, ry};
    appendRectangle(box, {radius, radius, radius, radius}, path);
}

}  // namespace svg

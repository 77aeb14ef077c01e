// Path data and its exact extent.
//
//     BoundsBuilder bounds;
//     addPathBounds("M0 0 Q50 100 100 0", Affine(), bounds);   // 0 0 100 50
//
// Curves count with their extrema, not with their control points; arcs with the part that is drawn. A subpath
// that is only a "move to" draws nothing and does not count. Broken data counts up to the break.
#pragma once

#include <string_view>

#include "formats/svg/transform.h"

namespace svg {

void addPathBounds(std::string_view data, const Affine& transform, BoundsBuilder& bounds);

// The points of a polygon or polyline; a lone last coordinate does not count.
void addPointsBounds(std::string_view points, const Affine& transform, BoundsBuilder& bounds);

}  // namespace svg

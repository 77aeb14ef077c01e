// Path data: its exact extent, and its outline.
//
//     BoundsBuilder bounds;
//     addPathBounds("M0 0 Q50 100 100 0", Affine(), bounds);   // 0 0 100 50
//
// Curves count with their extrema, not with their control points; arcs with the part that is drawn. A subpath
// that is only a "move to" draws nothing and does not count. Broken data counts up to the break.
#pragma once

#include <string_view>

#include "canvas/path.h"
#include "formats/svg/values/transform.h"

namespace svg {

void addPathBounds(std::string_view data, const Affine& transform, BoundsBuilder& bounds);

// How arcs are drawn: by curves of up to a quarter turn, or by one curve that has nothing but the ends and
// their directions, for markers.
enum class Arcs { exact, oneCurve };
// Appends the figures of path data, up to the break where it is broken.
void appendPath(std::string_view data, APath& path, Arcs arcs = Arcs::exact);
// The same for the points of a polyline or, closed, a polygon.
void appendPoints(std::string_view points, bool closed, APath& path);
// The exact extent of an outline.
AFRect outlineBounds(const APath& path);
// How long it is, from point to point; of curves a close approximation.
double outlineLength(const APath& path);

// The points of a polygon or polyline; a lone last coordinate does not count.
void addPointsBounds(std::string_view points, const Affine& transform, BoundsBuilder& bounds);

}  // namespace svg

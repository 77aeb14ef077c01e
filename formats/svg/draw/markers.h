// Markers along a path.
#pragma once

#include "formats/svg/draw/context/bounding_box.h"

namespace svg {

inline bool hasMarkers(const Style& style) {
    return !style.markerStart.empty() || !style.markerMid.empty() || !style.markerEnd.empty();
}

// Paints the markers of an outline in the user space `space`. Style and box are those of the shape.
void paintMarkers(DrawContext& context, const APath& outline, const Style& style, const UserSpace& space,
                  BoundingBox& box);

}  // namespace svg

// Markers along a path.
#pragma once

#include "formats/svg/draw/context/context.h"

namespace svg {

inline bool hasMarkers(const Style& style) {
    return !style.markerStart.empty() || !style.markerMid.empty() || !style.markerEnd.empty();
}

// Paints the markers of an outline in the user space `space`. The style is that of the shape.
void paintMarkers(DrawContext& context, const APath& outline, const Style& style, const UserSpace& space);

}  // namespace svg

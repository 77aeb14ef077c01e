// Patterns as tiles at the resolution of the picture.
#pragma once

#include "formats/svg/draw/context/context.h"

namespace svg {

// The tile of a pattern for something with the bounding box `box` in user space. Null when the pattern paints
// nothing. The tile is the cache's and stays until the next call.
const ATile* patternTile(DrawContext& context, pugi::xml_node pattern, const AFRect& box,
                         const UserSpace& space);

}  // namespace svg

// Image elements: PNG and JPEG in data URIs. Nothing outside the drawing is ever opened.
#pragma once

#include "formats/svg/draw/context/context.h"

namespace svg {

// Paints an image element; `opacity` from 0 to 1 is multiplied in. The element's opacity, clip path, mask and
// filter are the caller's.
void paintImage(DrawContext& context, const DrawnElement& image, double opacity);

}  // namespace svg

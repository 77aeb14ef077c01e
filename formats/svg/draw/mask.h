// Masks.
#pragma once

#include "formats/svg/draw/context/context.h"

namespace svg {

// The part of an element's user space that a mask shows; false when it shows nothing.
bool maskRegion(DrawContext& context, pugi::xml_node mask, const UserSpace& space, const AFRect& box,
                AFRect& region);
// Whether the mask asks for the element's bounding box.
bool maskNeedsBox(pugi::xml_node mask);

// Multiplies an image by a mask. `space`: from the element's user space to the image.
void maskImage(DrawContext& context, pugi::xml_node mask, const UserSpace& space, const AFRect& box,
               AImage& image);

// Multiplies an image by the opacity of another one of the same size.
void multiplyByAlpha(AImage& image, const AImage& coverage);

}  // namespace svg

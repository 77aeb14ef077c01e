// Clip paths.
#pragma once

#include <vector>

#include "formats/svg/draw/context/bounding_box.h"

namespace svg {

// Cuts the canvas as a style's clip path says, by pushClip, whose calls are added to `pushed`. What the canvas cannot
// cut goes to `complex`, for clipImage. `space`: from the element's user space. False: nothing is left.
bool pushClipPath(DrawContext& context, const Style& style, const UserSpace& space, BoundingBox& box,
                  int& pushed, std::vector<pugi::xml_node>& complex);

// Makes transparent what lies outside a clip path. `space`: from the element's user space to the image.
void clipImage(DrawContext& context, pugi::xml_node clipPath, const UserSpace& space, const AFRect& box,
               AImage& image);

}  // namespace svg

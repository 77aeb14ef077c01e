// Clip paths.
#pragma once

#include <vector>

#include "formats/svg/draw/context/bounding_box.h"

namespace svg {

// Cuts the canvas as a clip path says, by pushClip, whose calls are added to `pushed`. What the canvas cannot
// cut goes to `complex`, for clipImage. `view`: from the element's user space. False: nothing is left.
bool pushClipPath(DrawContext& context, std::string_view clipPath, const View& view, BoundingBox& box,
                  int& pushed, std::vector<pugi::xml_node>& complex);

// Makes transparent what lies outside a clip path. `view`: from the element's user space to the image.
void clipImage(DrawContext& context, pugi::xml_node clipPath, const View& view, const AFRect& box,
               AImage& image);

}  // namespace svg

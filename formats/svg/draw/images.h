// Image elements: PNG, JPEG, GIF and WebP pictures and SVG drawings in data URIs. Nothing outside the drawing is
// ever opened.
#pragma once

#include "formats/svg/draw/context/context.h"

namespace svg {

// Paints an image element; `opacity` from 0 to 1 is multiplied in. The element's opacity, clip path, mask and
// filter are the caller's.
void paintImage(DrawContext& context, const DrawnElement& image, double opacity);

// A picture by its data URI.
struct UriPicture {
    std::string_view uri;
    AFRect viewport;          // where it goes, in user space
    std::string_view aspect;  // preserveAspectRatio
    bool smooth;
    double opacity;
};
void paintUri(DrawContext& context, const UriPicture& picture, const UserSpace& space);

}  // namespace svg

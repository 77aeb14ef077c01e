// Filters: what they do to the picture of an element.
//
//     FilterArea area{style.filter, boundsInUserSpace, view};
//     RECT pixels = filterBounds(context, area, visible);       // the element is painted on these
//     applyFilter(context, area, image, {pixels.left, pixels.top});
#pragma once

#include "formats/svg/draw/context/context.h"

namespace svg {

// An element with a filter.
struct FilterArea {
    std::string_view filter;  // the property as written: url(#id) or functions such as blur(2px)
    AFRect box;               // its bounding box in user space
    const View& view;         // from its user space to the pixels of the canvas that `visible` refers to
    const DrawStyle& style;   // of the element, for colours and lengths
};

// Whether the property says something that is understood; else the element is drawn without a filter.
bool hasFilter(DrawContext& context, std::string_view filter);

// The pixels that the filter needs and fills so that what it shows within `visible` is right. Never much
// larger than `visible`; empty when the filter shows nothing there.
RECT filterBounds(DrawContext& context, const FilterArea& area, const RECT& visible);

// All that the filter can show, in the units of `area.view`'s target.
ABox filterReach(DrawContext& context, const FilterArea& area);

// Changes the picture of an element, whose first pixel is the canvas's pixel `origin`.
void applyFilter(DrawContext& context, const FilterArea& area, AImage& image, POINT origin);

}  // namespace svg

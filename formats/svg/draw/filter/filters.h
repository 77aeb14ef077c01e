// Filters: what they do to the picture of an element.
//
//     ElementFilter filter;
//     if (filter.read(context, {style.own.filter, boundsInUserSpace, space, style})) {
//         const RECT pixels = filter.bounds(visible);            // the element is painted on these
//         AImage image = paintElement(pixels);
//         filter.apply(context, image, {pixels.left, pixels.top});
//     }
#pragma once

#include "formats/svg/draw/context/context.h"

namespace svg {

// An element with a filter.
struct FilterArea {
    std::string_view filter;  // the property as written: url(#id) or functions such as blur(2px)
    AFRect box;               // its bounding box in user space
    const UserSpace& space;   // from its user space to the pixels of the canvas that `visible` refers to
    const Style& style;       // of the element, for colours and lengths
};

struct FilterGraph;

// A filter property, read once for one element at one resolution.
class ElementFilter {
public:
    ElementFilter();
    ~ElementFilter();

    // False when the property says nothing that is understood: the element is drawn without a filter.
    bool read(DrawContext& context, const FilterArea& area);

    // The pixels that the filter needs and fills so that what it shows within `visible` is right. Never much
    // larger than `visible`; empty when the filter shows nothing there.
    RECT bounds(const RECT& visible) const;

    // All that the filter can show, in the units of the space's target.
    ABox reach() const;

    // Changes the picture of an element, whose first pixel is the canvas's pixel `origin`. A filter that the
    // picture's budget does not allow changes nothing.
    void apply(DrawContext& context, AImage& image, POINT origin) const;

private:
    std::vector<FilterGraph> m_graphs;  // in the order in which they are applied
};

}  // namespace svg

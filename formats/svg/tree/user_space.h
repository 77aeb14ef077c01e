// How an element's coordinates become drawing coordinates, and the boxes of the simple shapes.
//
// Import and the lazy boxes of shapes go down through the same functions, so that both agree.
#pragma once

#include <functional>

#include "formats/svg/style/attributes.h"
#include "formats/svg/style/style.h"
#include "formats/svg/values/transform.h"
#include "formats/svg/values/units.h"

namespace svg {

struct UserSpace {
    Affine toDrawing;
    // What percentages refer to.
    double width = 0;
    double height = 0;
    // The size that a "use" around the element asks of a symbol or drawing; negative: none.
    double useWidth = -1;
    double useHeight = -1;
};

// What the root shows: an area in user units, and the pixels, 96 to the inch, that a unit is meant to take.
struct Page {
    AFRect area;
    double scale = 1;
};

// The user space of the content of the drawing's root, and its page: the size, or the view box with what the
// proportions of the size show beside it.
UserSpace rootSpace(const AttributeSet& root, Page& page);

// Reads a viewBox attribute; false when it is none or has no area.
bool parseViewBox(std::string_view text, AFRect& box);
// A view box without width or height: what has it is not drawn.
bool isEmptyViewBox(std::string_view text);
// From a view box to a viewport of that size at the origin. Empty preserveAspectRatio: centred, whole.
Affine fitViewBox(const AFRect& box, double width, double height, std::string_view aspect);

// Elements with a size of their own, which cuts off what lies outside.
constexpr bool isViewport(Element element) {
    return element == Element::svg || element == Element::symbol;
}
// Such an element shows what lies from 0, 0 to the width and height of this user space, before its view box.
UserSpace viewportOf(const UserSpace& outer, const AttributeSet& attributes);

// The user space inside an element: its transform, its view box.
UserSpace enter(const UserSpace& outer, Element element, const AttributeSet& attributes);

// Puts the geometry and the transform (transform, transform-origin) that a style gives an element into its attributes.
// `outer`: the space
// in which the element stands. `ownBox`: gives the element's own box in its user space, for transform-box.
void readTransform(AttributeSet& attributes, const Style& style, const UserSpace& outer,
                   const std::function<AFRect()>& ownBox);
inline bool hasOwnTransform(const Style& style) {
    return style.hasOwn && (!style.own.transform.empty() || !style.own.transformOrigin.empty() ||
                            style.own.geometry != nullptr);
}
// Puts only the geometry that a style gives an element (width, cx) into its attributes.
void readGeometry(AttributeSet& attributes, const Style& style);
// Of an element with these attributes; none without.
Affine ownTransform(const AttributeSet& attributes);
// A paint server's or clip path's transform about the origin that its style asks for.
Affine aboutOrigin(const Affine& transform, const Style& style, const UserSpace& space);

// A length attribute; `missing` when it is not there or broken.
double length(const AttributeSet& attributes, Attribute attribute, Axis axis, const LengthContext& context,
              double missing = 0);

// The box of a rect, circle, ellipse, line or image, in drawing coordinates, its own transform included.
AFRect shapeBounds(Element element, const AttributeSet& attributes, const UserSpace& outer, double fontSize);

// The same for path, polygon and polyline.
AFRect curveBounds(Element element, const AttributeSet& attributes, const UserSpace& outer);

}  // namespace svg

#include "formats/svg/draw/shapes.h"

#include <algorithm>

#include "formats/svg/values/outlines.h"

namespace svg {

void appendShape(Element shape, const AttributeSet& attributes, const UserSpace& space, double fontSize,
                 APath& path, Arcs arcs) {
    const LengthContext context{fontSize, space.width, space.height};
    const auto get = [&](Attribute attribute, Axis axis, double missing = 0) {
        return length(attributes, attribute, axis, context, missing);
    };
    switch (shape) {
        case Element::rect: {
            const double width = get(Attribute::width, Axis::horizontal);
            const double height = get(Attribute::height, Axis::vertical);
            if (!(width > 0 && height > 0)) return;
            const double x = get(Attribute::x, Axis::horizontal);
            const double y = get(Attribute::y, Axis::vertical);
            double rx = get(Attribute::rx, Axis::horizontal, -1);
            double ry = get(Attribute::ry, Axis::vertical, -1);
            if (rx < 0) rx = ry;
            if (ry < 0) ry = rx;
            rx = std::clamp(rx, 0.0, width / 2);
            ry = std::clamp(ry, 0.0, height / 2);
            if (rx == 0 || ry == 0) rx = ry = 0;
            return appendRectangle({x, y, x + width, y + height}, rx, ry, path);
        }
        case Element::circle: {
            const double r = get(Attribute::r, Axis::both);
            return appendEllipse({get(Attribute::cx, Axis::horizontal), get(Attribute::cy, Axis::vertical)},
                                 r, r, path);
        }
        case Element::ellipse: {
            double rx = get(Attribute::rx, Axis::horizontal, -1);
            double ry = get(Attribute::ry, Axis::vertical, -1);
            if (rx < 0) rx = ry;  // "auto"
            if (ry < 0) ry = rx;
            return appendEllipse({get(Attribute::cx, Axis::horizontal), get(Attribute::cy, Axis::vertical)},
                                 rx, ry, path);
        }
        case Element::line:
            path.moveTo({get(Attribute::x1, Axis::horizontal), get(Attribute::y1, Axis::vertical)});
            path.lineTo({get(Attribute::x2, Axis::horizontal), get(Attribute::y2, Axis::vertical)});
            return;
        case Element::polygon:
        case Element::polyline:
            return appendPoints(attributes.get(Attribute::points), shape == Element::polygon, path);
        case Element::path:
            return appendPath(attributes.get(Attribute::d), path, arcs);
        default:
            return;
    }
}

}  // namespace svg

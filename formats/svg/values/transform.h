// Affine transforms and bounding boxes under them.
#pragma once

#include <cmath>
#include <string_view>

#include "kzutil/affine.h"
#include "kzutil/rect.h"

namespace svg {

using Affine = AAffine;

inline Affine translation(double x, double y) {
    return Affine::translation(x, y);
}

// Quarter turns are exact, so that a box turned by 90 degrees keeps whole coordinates.
Affine rotation(double degrees);

// The value of a transform attribute. One that cannot be read to its end counts as no transform.
Affine parseTransform(std::string_view text);

// What lengths of a style's transform refer to: percentages to the size of the reference box.
struct TransformLengths {
    double fontSize = 16;
    double width = 0;
    double height = 0;
};
// The value of the property "transform", whose lengths and angles have units: "rotate(45deg) translate(10%, 2em)".
// False for anything else, three dimensions included.
bool parseStyleTransform(std::string_view text, const TransformLengths& lengths, Affine& transform);
// The value of "transform-origin": words, lengths, percentages. False for anything else.
bool parseTransformOrigin(std::string_view text, const TransformLengths& lengths, AFPoint& origin);

// Collects points into a rectangle.
class BoundsBuilder {
public:
    void add(AFPoint p) {
        if (m_empty) {
            m_rect = {p.x, p.y, p.x, p.y};
            m_empty = false;
            return;
        }
        if (p.x < m_rect.left) m_rect.left = p.x;
        if (p.y < m_rect.top) m_rect.top = p.y;
        if (p.x > m_rect.right) m_rect.right = p.x;
        if (p.y > m_rect.bottom) m_rect.bottom = p.y;
    }
    void add(const AFRect& rect) {
        add(AFPoint{rect.left, rect.top});
        add(AFPoint{rect.right, rect.bottom});
    }
    bool isEmpty() const { return m_empty; }
    // Finite always; the default rectangle when nothing was added.
    AFRect get() const;

private:
    AFRect m_rect;
    bool m_empty = true;
};

// The extent of an ellipse around `center`, or of a rectangle with round corners: the rectangle's half
// extents without the corners are `core`, and the corners add the radii (rx, ry).
AFRect roundBounds(const Affine& transform, AFPoint center, AFPoint core, double rx, double ry);

// The extent of a transformed rectangle.
AFRect rectBounds(const Affine& transform, const AFRect& rect);

}  // namespace svg

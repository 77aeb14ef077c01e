// The shapes that a style sheet may cut with: "circle(40% at left 10px top 50%) view-box".
//
//     BasicShape shape;
//     if (parseBasicShape("inset(10px round 5px)", shape)) appendBasicShape(shape, box, 16, path);
#pragma once

#include <cstdint>
#include <string_view>

#include "canvas/canvas.h"

namespace svg {

// The box that its lengths refer to.
enum class ShapeBox : std::uint8_t { fill, stroke, view };

struct BasicShape {
    ShapeBox box = ShapeBox::stroke;
    EFillRule rule = EFillRule::nonZero;
    // Views of the text. An empty name stands for the box itself.
    std::string_view name;
    std::string_view arguments;
};

// circle(), ellipse(), inset(), rect(), xywh(), polygon(), path(), and a box, before or behind it or alone. False for
// anything else.
bool parseBasicShape(std::string_view text, BasicShape& shape);
// The outline of a parsed shape in the user space of the box; none where the shape has no area.
void appendBasicShape(const BasicShape& shape, const AFRect& box, double fontSize, APath& path);

inline bool isBasicShape(std::string_view text) {
    BasicShape shape;
    return parseBasicShape(text, shape);
}

}  // namespace svg

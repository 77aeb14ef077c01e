// What a fill or a stroke is painted with.
#pragma once

#include "formats/svg/draw/context/bounding_box.h"
#include "kzcore/document/object.h"
#include "kzcore/document/object_painter.h"

namespace svg {

// Whose paint an element shows.
struct PaintSource {
    const AObject* object = nullptr;  // its brush and pen; null: what the style says
    APaintVisibility visible;
};

// Whether there is a paint at all, as far as that is known without looking for what it refers to.
bool hasFill(const PaintSource& source, const Style& style);
bool hasStroke(const PaintSource& source, const Style& style);

// The paint of an element with its opacities, multiplied by `opacity`. False: nothing is painted. What the
// paint points to stays until the next call.
bool fillPaint(DrawContext& context, const PaintSource& source, const Style& style, const UserSpace& space,
               BoundingBox& box, double opacity, APaint& paint);
bool strokePaint(DrawContext& context, const PaintSource& source, const Style& style, const UserSpace& space,
                 BoundingBox& box, double opacity, APaint& paint);

}  // namespace svg

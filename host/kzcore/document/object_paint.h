// The paint of an object without its holders, and what stands for it where colours are shown or hidden.
//
//     if (AReferItem* item = shownItem(fillItem(object))) …   // the colour of a solid fill, or the gradient
#pragma once

#include "kzcore/document/object.h"
#include "kzcore/document/refer_item.h"

// Null when the object has no fill, or a fill without an item.
inline ABrushItem* fillItem(const AObject& object) {
    const ABrush* brush = object.getBrush();
    return brush ? brush->getBrushItem() : nullptr;
}

// Null when the object has no stroke, or a stroke without an item.
inline APenItem* strokeItem(const AObject& object) {
    const APen* pen = object.getPen();
    return pen ? pen->getPenItem() : nullptr;
}

// Null when the brush item is null, not solid, or has no colour.
inline AColorItem* colorOf(const ABrushItem* brush) {
    const auto* solid = dynamic_cast<const ASolidBrushItem*>(brush);
    return solid ? solid->getColorItem() : nullptr;
}

// What a brush is known by: the colour of a solid one, which is null when it has none, or the item itself.
// Null for null.
inline AReferItem* shownItem(ABrushItem* brush) {
    const auto* solid = dynamic_cast<const ASolidBrushItem*>(brush);
    return solid ? static_cast<AReferItem*>(solid->getColorItem()) : brush;
}

// What a pen is known by: its colour, else its brush item, null when it has neither. Null for null.
inline AReferItem* shownItem(const APenItem* pen) {
    if (!pen) return nullptr;
    if (AColorItem* color = pen->getColorItem()) return color;
    return pen->getBrushItem();
}

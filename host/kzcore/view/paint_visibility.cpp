#include "kzcore/view/paint_visibility.h"

#include "kzcore/document/object.h"
#include "kzcore/document/refer_item.h"
#include "kzcore/view/view_filter.h"

APaintVisibility paintVisibility(const AObject& object, AViewFilter* filter) {
    APaintVisibility visible;
    if (filter == nullptr) return visible;
    const ABrush* brush = object.getBrush();
    if (brush && brush->getBrushItem()) visible.fill = filter->isVisible(brush->getBrushItem()) != 0;
    const APen* pen = object.getPen();
    if (pen && pen->getPenItem()) {
        APenItem* item = pen->getPenItem();
        // A pen with a brush has no colour that a filter could find in it.
        AReferItem* asked = item->getBrushItem() ? static_cast<AReferItem*>(item->getBrushItem()) : item;
        visible.stroke = filter->isVisible(asked) != 0;
    }
    return visible;
}

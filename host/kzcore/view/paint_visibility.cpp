#include "kzcore/view/paint_visibility.h"

#include "kzcore/document/object_paint.h"
#include "kzcore/view/view_filter.h"

APaintVisibility paintVisibility(const AObject& object, AViewFilter* filter) {
    APaintVisibility visible;
    if (filter == nullptr) return visible;
    if (ABrushItem* fill = fillItem(object)) visible.fill = filter->isVisible(fill) != 0;
    if (APenItem* stroke = strokeItem(object)) {
        // A pen with a brush has no colour that a filter could find in it.
        AReferItem* asked =
            stroke->getBrushItem() ? static_cast<AReferItem*>(stroke->getBrushItem()) : stroke;
        visible.stroke = filter->isVisible(asked) != 0;
    }
    return visible;
}

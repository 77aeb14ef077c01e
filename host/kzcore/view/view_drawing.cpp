#include <memory>

#include "kzcore/device/device.h"
#include "kzcore/document/document.h"
#include "kzcore/document/object_paint.h"
#include "kzcore/document/object_walk.h"
#include "kzcore/view/paint_visibility.h"
#include "kzcore/view/view.h"

namespace {

// Documents without a format of their own show the boxes of their objects.
class BoxPainter : public AObjectPainter {
public:
    BoxPainter(ACanvas& canvas, const AAffine& toPixels) : m_canvas(canvas), m_toPixels(toPixels) {}

    bool enter(const AParent&) override { return true; }
    void leave(const AParent&) override {}

    void paint(const AObject& object, APaintVisibility visible) override {
        AFRect bounds;
        object.getBoundingRect(bounds);
        const APath box = APath::rectangle(bounds);
        const auto paintOf = [](const AColorItem& color) { return APaint{AColor(color.getDisplayColor())}; };
        const AColorItem* fill = colorOf(fillItem(object));
        if (visible.fill && fill) m_canvas.fill(box, m_toPixels, paintOf(*fill), EFillRule::nonZero);
        const APenItem* pen = strokeItem(object);
        const AColorItem* stroke =
            pen && pen->getStyle() != APenItem::kStyleNone ? pen->getColorItem() : nullptr;
        if (visible.stroke && stroke) m_canvas.stroke(box, m_toPixels, paintOf(*stroke), AStrokeStyle());
    }

private:
    ACanvas& m_canvas;
    const AAffine& m_toPixels;
};

}  // namespace

void ADocView::draw(ADevice& device, const AAffine& toPixels) const {
    device.DrawStart();
    {
        ACanvas& canvas = device.canvas();
        std::unique_ptr<AObjectPainter> painter;
        if (const AGeometrySource* source = m_document.getGeometrySource())
            painter = source->startPainting(canvas, toPixels);
        if (!painter) painter = std::make_unique<BoxPainter>(canvas, toPixels);
        const auto paint = [&](const AObject& object) {
            const APaintVisibility visible = paintVisibility(object, m_viewFilter);
            const bool hasPaint = object.getBrush() || object.getPen();
            const bool shows = (object.getBrush() && visible.fill) || (object.getPen() && visible.stroke);
            if (shows || !hasPaint) painter->paint(object, visible);
        };
        walkShown(m_document.getSecondaryDatabase(), *painter, paint);
        walkShown(&m_document.getDatabase(), *painter, paint);
        painter->finish();
    }
    device.DrawEnd();
}

#include <memory>

#include "kzcore/device/device.h"
#include "kzcore/document/document.h"
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
        const ABrush* brush = object.getBrush();
        const auto* solid = brush ? dynamic_cast<ASolidBrushItem*>(brush->getBrushItem()) : nullptr;
        if (visible.fill && solid && solid->getColorItem()) {
            m_canvas.fill(box, m_toPixels, {AColor(solid->getColorItem()->getDisplayColor())},
                          EFillRule::nonZero);
        }
        const APen* pen = object.getPen();
        const APenItem* item = pen ? pen->getPenItem() : nullptr;
        if (visible.stroke && item && item->getStyle() != APenItem::kStyleNone && item->getColorItem()) {
            m_canvas.stroke(box, m_toPixels, {AColor(item->getColorItem()->getDisplayColor())},
                            AStrokeStyle());
        }
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

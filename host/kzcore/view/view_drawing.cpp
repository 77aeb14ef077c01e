#include <memory>

#include "kzcore/device/device.h"
#include "kzcore/document/document.h"
#include "kzcore/document/object_paint.h"
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

// One pass. Containers may be nested a thousand deep, so the way down is kept in a list.
class Pass {
public:
    Pass(AObjectPainter& painter, AViewFilter* filter) : m_painter(painter), m_filter(filter) {}

    void drawLayers(ADatabase* database) {
        if (!database) return;
        POSITION at = database->children.GetHeadPosition();
        while (at) {
            auto* layer = static_cast<ALayer*>(database->children.GetNext(at));
            if (!layer->isHidden()) drawContainer(*layer);
        }
    }

private:
    struct Open {
        AParent* container;
        POSITION next;
    };

    void drawContainer(AParent& container) {
        enter(container);
        while (!m_open.empty()) {
            Open& open = m_open.back();
            if (!open.next) {
                m_painter.leave(*open.container);
                m_open.pop_back();
                continue;
            }
            auto& object = static_cast<AObject&>(*open.container->children.GetNext(open.next));
            if (object.getObjectFlags(kObjectHidden)) continue;
            if (AParent* inner = object.asParent()) {
                enter(*inner);
            } else {
                drawObject(object);
            }
        }
    }

    void enter(AParent& container) {
        if (m_painter.enter(container)) m_open.push_back({&container, container.children.GetHeadPosition()});
    }

    void drawObject(const AObject& object) {
        const APaintVisibility visible = paintVisibility(object, m_filter);
        const bool hasPaint = object.getBrush() || object.getPen();
        const bool shows = (object.getBrush() && visible.fill) || (object.getPen() && visible.stroke);
        if (shows || !hasPaint) m_painter.paint(object, visible);
    }

    AObjectPainter& m_painter;
    AViewFilter* m_filter;
    std::vector<Open> m_open;
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
        Pass pass(*painter, m_viewFilter);
        pass.drawLayers(m_document.getSecondaryDatabase());
        pass.drawLayers(&m_document.getDatabase());
        painter->finish();
    }
    device.DrawEnd();
}

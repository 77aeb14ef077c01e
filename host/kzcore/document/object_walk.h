// Walks down what a database shows, in drawing order, for a painter.
//
//     walkShown(&document.getDatabase(), painter, [&](const AObject& object) { painter.paint(object, {}); });
#pragma once

#include <vector>

#include "kzcore/document/object.h"
#include "kzcore/document/object_painter.h"

// Enters and leaves the containers, and calls paint(object) for every object without children. Hidden layers and
// hidden objects are passed over. Containers may be nested a thousand deep, so the way down is kept in a list.
template <class Paint>
class AShownWalk {
public:
    AShownWalk(AObjectPainter& painter, Paint paint) : m_painter(painter), m_paint(std::move(paint)) {}

    void walkLayers(ADatabase& database) {
        POSITION at = database.children.GetHeadPosition();
        while (at) {
            auto* layer = static_cast<ALayer*>(database.children.GetNext(at));
            if (!layer->isHidden()) walkContainer(*layer);
        }
    }

private:
    struct Open {
        AParent* container;
        POSITION next;
    };

    void walkContainer(AParent& container) {
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
                m_paint(object);
            }
        }
    }

    void enter(AParent& container) {
        if (m_painter.enter(container)) m_open.push_back({&container, container.children.GetHeadPosition()});
    }

    AObjectPainter& m_painter;
    Paint m_paint;
    std::vector<Open> m_open;
};

// A null database shows nothing.
template <class Paint>
void walkShown(ADatabase* database, AObjectPainter& painter, Paint paint) {
    if (database) AShownWalk<Paint>(painter, std::move(paint)).walkLayers(*database);
}

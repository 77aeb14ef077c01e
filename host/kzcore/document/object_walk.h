// Walks down what a database shows, in drawing order, for a painter.
//
//     walkShown(&document.getDatabase(), painter, [&](const AObject& object) { painter.paint(object, {}); });
#pragma once

#include <functional>
#include <vector>

#include "kzcore/document/object.h"
#include "kzcore/document/object_painter.h"

// Enters and leaves the containers, and calls paint(object) for every object without children. Hidden layers and
// hidden objects are passed over. Containers may be nested a thousand deep, so the way down is kept in a list.
template <class Paint>
class AShownWalk {
public:
    AShownWalk(AObjectPainter& painter, Paint paint) : m_painter(painter), m_paint(std::move(paint)) {}

    // Before this object, if the walk comes to it, `ends` is asked whether to end there.
    void setEnd(const AObject& end, std::function<bool()> ends) {
        m_end = &end;
        m_ends = std::move(ends);
    }

    void walkLayers(ADatabase& database) { walkLayers(database, database.children.GetHeadPosition()); }

    // Enters the containers around an object of the database and goes on with it and what comes behind. `entered`
    // may stop it before that. False when it was stopped, or the painter did not enter a container.
    bool walkFrom(ADatabase& database, const AObject& first, const std::function<bool()>& entered) {
        std::vector<AParent*> around;
        for (AParent* at = first.getParent(); at && at != &database; at = at->getParent())
            around.push_back(at);
        const AObject* next = &first;
        POSITION layers = positionOf(database, around.empty() ? first : *around.back());
        if (!around.empty()) database.children.GetNext(layers);
        for (std::size_t i = around.size(); i-- > 0;) {
            if (!m_painter.enter(*around[i])) return false;
            next = i > 0 ? around[i - 1] : &first;
            POSITION at = positionOf(*around[i], *next);
            if (i > 0) around[i]->children.GetNext(at);
            m_open.push_back({around[i], at});
        }
        if (!entered()) return false;
        goOn();
        walkLayers(database, layers);
        return true;
    }

private:
    struct Open {
        AParent* container;
        POSITION next;
    };

    static POSITION positionOf(const AParent& parent, const AObject& child) {
        POSITION at = parent.children.GetHeadPosition();
        while (at) {
            POSITION next = at;
            if (parent.children.GetNext(next) == &child) break;
            at = next;
        }
        return at;
    }

    void walkLayers(ADatabase& database, POSITION at) {
        while (at && !m_hasEnded) {
            auto* layer = static_cast<ALayer*>(database.children.GetNext(at));
            if (isEnd(*layer)) return;
            if (layer->isHidden()) continue;
            enter(*layer);
            goOn();
        }
    }

    bool isEnd(const AObject& object) {
        m_hasEnded = m_hasEnded || (&object == m_end && m_ends());
        return m_hasEnded;
    }

    void goOn() {
        while (!m_open.empty()) {
            Open& open = m_open.back();
            if (!open.next || m_hasEnded) {
                m_painter.leave(*open.container);
                m_open.pop_back();
                continue;
            }
            auto& object = static_cast<AObject&>(*open.container->children.GetNext(open.next));
            if (isEnd(object)) continue;
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
    const AObject* m_end = nullptr;
    std::function<bool()> m_ends;
    bool m_hasEnded = false;
};

// A null database shows nothing.
template <class Paint>
void walkShown(ADatabase* database, AObjectPainter& painter, Paint paint) {
    if (database) AShownWalk<Paint>(painter, std::move(paint)).walkLayers(*database);
}

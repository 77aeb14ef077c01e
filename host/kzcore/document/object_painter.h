// Painting the objects of a document, one by one, in drawing order.
#pragma once

class AObject;
class AParent;

// Which of an object's own paint a view shows.
struct APaintVisibility {
    bool fill = true;
    bool stroke = true;
};

// Knows how objects look; made by the format that read the document, for one pass over it. The pass enters
// every container before its children and leaves it behind them.
class AObjectPainter {
public:
    virtual ~AObjectPainter() = default;

    // False: nothing inside can be seen; then the pass goes on behind the container, without leave.
    virtual bool enter(const AParent& container) = 0;
    virtual void leave(const AParent& container) = 0;
    // Paints an object without children, and of it what is visible.
    virtual void paint(const AObject& object, APaintVisibility visible) = 0;
    // Behind the last object; not called when the pass was broken off.
    virtual void finish() {}
};

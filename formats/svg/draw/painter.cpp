#include "formats/svg/draw/painter.h"

#include "formats/svg/draw/element_walk.h"
#include "formats/svg/draw/picture_context.h"

namespace svg {

namespace {

class Painter : public AObjectPainter {
public:
    Painter(const std::string& text, const UserSpace& root, ACanvas& canvas)
        : m_context(text, root, canvas),
          m_walk(m_context, m_context.styleAt(m_context.tree().root()), root),
          m_seen(m_walk.beginRoot(m_context.tree().root())) {}

    bool enter(const AParent& container) override {
        if (!m_seen) return false;
        const pugi::xml_node node = nodeOf(container);
        // The layer of loose objects, a shadow: made around objects, not drawn.
        if (!node) {
            m_walk.openPlain();
            return true;
        }
        const bool layer = container.getClassInfo().kind == AClassKind::layer;
        return m_walk.open(node, kindOf(node),
                           layer ? ElementWalk::Display::ofModel : ElementWalk::Display::ofElement);
    }

    void leave(const AParent&) override { m_walk.close(); }

    void paint(const AObject& object, APaintVisibility visible) override {
        if (!m_seen) return;
        if (const pugi::xml_node node = nodeOf(object)) m_walk.paint(node, {&object, visible});
    }

    void finish() override { m_walk.close(); }

private:
    pugi::xml_node nodeOf(const AObject& object) {
        const std::uint32_t offset = object.getSourceIndex();
        return offset != 0 ? m_context.tree().at(offset) : pugi::xml_node();
    }

    PictureContext m_context;
    ElementWalk m_walk;
    bool m_seen;  // the root shows at all
};

}  // namespace

std::unique_ptr<AObjectPainter> makePainter(const std::string& text, const UserSpace& root, ACanvas& canvas,
                                            const AAffine& toPixels) {
    UserSpace space = root;
    space.toDrawing = toPixels * space.toDrawing;
    return std::make_unique<Painter>(text, space, canvas);
}

}  // namespace svg

#include "formats/svg/draw/painter.h"

#include <mutex>

#include "formats/svg/draw/element_walk.h"
#include "formats/svg/draw/picture_context.h"
#include "formats/svg/xml/xml_memory.h"

namespace svg {

namespace {

pugi::xml_node nodeOf(DrawContext& context, const AObject& object) {
    const std::uint32_t offset = object.getSourceIndex();
    return offset != 0 ? context.tree().at(offset) : pugi::xml_node();
}

// A walk down the elements of objects, from the root.
class ObjectWalk {
public:
    ObjectWalk(DrawContext& context, const UserSpace& root)
        : m_context(context), m_walk(context, context.styleAt(context.tree().root()), root) {}

    ElementWalk& walk() { return m_walk; }

    bool enter(const AParent& container) {
        const pugi::xml_node node = nodeOf(m_context, container);
        // The layer of loose objects, a shadow: made around objects, not drawn.
        if (!node) {
            m_walk.openPlain();
            return true;
        }
        const bool layer = container.getClassInfo().kind == AClassKind::layer;
        return m_walk.open(node, kindOf(node),
                           layer ? ElementWalk::Display::ofModel : ElementWalk::Display::ofElement);
    }
    // The containers around an object, without what they do to their content.
    void enterAround(const AObject& object) {
        std::vector<const AParent*> containers;
        for (const AParent* at = object.getParent(); at != nullptr; at = at->getParent()) {
            if (at->getSourceIndex() != 0) containers.push_back(at);
        }
        for (std::size_t i = containers.size(); i-- > 0;) {
            const pugi::xml_node node = nodeOf(m_context, *containers[i]);
            m_walk.openAround(node, kindOf(node));
        }
    }
    void paint(const AObject& object, APaintVisibility visible) {
        if (const pugi::xml_node node = nodeOf(m_context, object)) m_walk.paint(node, {&object, visible});
    }

private:
    DrawContext& m_context;
    ElementWalk m_walk;
};

class Painter : public AObjectPainter {
public:
    Painter(const std::string& text, const UserSpace& root, ACanvas& canvas)
        : m_context(text, root, canvas),
          m_walk(m_context, root),
          m_seen(m_walk.walk().beginRoot(m_context.tree().root())) {}

    bool enter(const AParent& container) override { return m_seen && m_walk.enter(container); }
    void leave(const AParent&) override { m_walk.walk().close(); }
    void paint(const AObject& object, APaintVisibility visible) override {
        if (m_seen) m_walk.paint(object, visible);
    }
    void finish() override { m_walk.walk().close(); }

private:
    PictureContext m_context;
    ObjectWalk m_walk;
    bool m_seen;  // the root shows at all
};

class Recording : public AObjectPainter {
public:
    Recording(const std::string& text, const UserSpace& root, ADisplayRecorder& recorder)
        : m_recorder(recorder), m_context(text, root, recorder), m_walk(m_context, root) {
        if (m_context.blends()) recorder.drawAsOnePicture();
        m_seen = m_walk.walk().beginRoot(m_context.tree().root());
    }

    bool enter(const AParent& container) override {
        if (!m_seen) return false;
        m_recorder.beginContainer(container);
        return m_walk.enter(container);
    }
    void leave(const AParent&) override { m_walk.walk().close(); }
    void paint(const AObject& object, APaintVisibility visible) override {
        if (!m_seen) return;
        m_recorder.beginObject(object);
        m_walk.paint(object, visible);
        m_recorder.endObject();
        m_recorder.noteRepeated(m_context.spent(), m_context.mostRepeated());
    }
    void finish() override { m_walk.walk().close(); }

private:
    // Given back behind the tree: of a thread that ends, nobody else would.
    struct XmlMemory {
        ~XmlMemory() { releaseXmlMemory(); }
    };

    XmlMemory m_memory;
    ADisplayRecorder& m_recorder;
    PictureContext m_context;
    ObjectWalk m_walk;
    bool m_seen = false;
};

// The tree and what is kept with it serve one painter after the other.
class PictureMaker : public APictureMaker {
public:
    PictureMaker(const std::string& text, const UserSpace& root) : m_text(text), m_root(root) {}

    std::unique_ptr<AObjectPainter> start(ACanvas& canvas, const AAffine& toPixels,
                                          const AObject* around) override {
        std::unique_lock lock(m_mutex);
        UserSpace root = m_root;
        root.toDrawing = toPixels * root.toDrawing;
        if (m_context) {
            m_context->restart(root, canvas);
        } else {
            m_context = std::make_unique<PictureContext>(m_text, root, canvas);
        }
        return std::make_unique<Part>(std::move(lock), *m_context, root, around);
    }

private:
    class Part : public AObjectPainter {
    public:
        Part(std::unique_lock<std::mutex> lock, DrawContext& context, const UserSpace& root,
             const AObject* around)
            : m_lock(std::move(lock)), m_walk(context, root) {
            if (around) {
                m_walk.enterAround(*around);
            } else {
                m_seen = m_walk.walk().beginRoot(context.tree().root());
                m_hasRoot = true;
            }
        }
        bool enter(const AParent& container) override { return m_seen && m_walk.enter(container); }
        void leave(const AParent&) override { m_walk.walk().close(); }
        void paint(const AObject& object, APaintVisibility visible) override {
            if (m_seen) m_walk.paint(object, visible);
        }
        void finish() override {
            if (m_hasRoot) m_walk.walk().close();
        }

    private:
        std::unique_lock<std::mutex> m_lock;
        ObjectWalk m_walk;
        bool m_seen = true;
        bool m_hasRoot = false;
    };

    const std::string& m_text;
    UserSpace m_root;
    std::mutex m_mutex;
    std::unique_ptr<PictureContext> m_context;
};

}  // namespace

std::unique_ptr<AObjectPainter> makePainter(const std::string& text, const UserSpace& root, ACanvas& canvas,
                                            const AAffine& toPixels) {
    UserSpace space = root;
    space.toDrawing = toPixels * space.toDrawing;
    return std::make_unique<Painter>(text, space, canvas);
}

std::unique_ptr<AObjectPainter> makeRecording(const std::string& text, const UserSpace& root,
                                              ADisplayRecorder& recorder) {
    recorder.setPictureMaker(std::make_shared<PictureMaker>(text, root));
    return std::make_unique<Recording>(text, root, recorder);
}

}  // namespace svg

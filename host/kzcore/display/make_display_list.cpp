// A list is made by the painter of the document's format, of a large document in two halves by two threads.
#include <atomic>
#include <new>
#include <optional>
#include <system_error>
#include <thread>

#include "kzcore/display/display_recorder.h"
#include "kzcore/document/document.h"
#include "kzcore/document/object_walk.h"
#include "kzcore/document/refer_item.h"

namespace {

// With fewer objects, another thread costs more than it spares.
constexpr std::size_t kWorthAThread = 5000;

// Documents without a format of their own show the boxes of their objects.
class BoxRecording : public AObjectPainter {
public:
    explicit BoxRecording(ADisplayRecorder& recorder) : m_recorder(recorder) {}

    bool enter(const AParent&) override { return true; }
    void leave(const AParent&) override {}

    void paint(const AObject& object, APaintVisibility) override {
        AFRect bounds;
        object.getBoundingRect(bounds);
        const APath box = APath::rectangle(bounds);
        m_recorder.beginObject(object);
        const ABrush* brush = object.getBrush();
        const auto* solid = brush ? dynamic_cast<ASolidBrushItem*>(brush->getBrushItem()) : nullptr;
        if (solid && solid->getColorItem()) {
            m_recorder.fill(box, AAffine(), {AColor(solid->getColorItem()->getDisplayColor())},
                            EFillRule::nonZero);
        }
        const APen* pen = object.getPen();
        const APenItem* item = pen ? pen->getPenItem() : nullptr;
        if (item && item->getStyle() != APenItem::kStyleNone && item->getColorItem()) {
            m_recorder.stroke(box, AAffine(), {AColor(item->getColorItem()->getDisplayColor())},
                              AStrokeStyle());
        }
        m_recorder.endObject();
    }

private:
    ADisplayRecorder& m_recorder;
};

std::unique_ptr<AObjectPainter> startRecording(const ADocument& document, ADisplayRecorder& recorder) {
    std::unique_ptr<AObjectPainter> painter;
    if (const AGeometrySource* source = document.getGeometrySource())
        painter = source->startRecording(recorder);
    if (!painter) painter = std::make_unique<BoxRecording>(recorder);
    return painter;
}

// The object in the middle, or what is hidden around it; null where its database cannot be told. Objects are
// numbered in drawing order where nobody has moved them; else the halves differ in size.
const AObject* middleOf(ADocument& document) {
    const AObject* middle = document.getObject(static_cast<std::uint32_t>(document.getObjectCount() / 2 + 1));
    if (!middle || !middle->getParent()) return nullptr;
    const AObject* top = middle;
    for (const AParent* at = middle->getParent(); at; at = at->getParent()) {
        const bool isLayer = at->getParent() == &document.getDatabase();
        const bool isHidden =
            isLayer ? static_cast<const ALayer*>(at)->isHidden() : at->getObjectFlags(kObjectHidden);
        if (isHidden) middle = at;
        top = at;
    }
    return top == &document.getDatabase() && middle != top ? middle : nullptr;
}

// What comes behind an object, recorded by a thread of its own.
class OtherHalf {
public:
    // Raises system_error where there is no thread.
    OtherHalf(ADocument& document, const AObject& first)
        : m_document(document), m_first(first), m_thread([this] { run(); }) {}
    ~OtherHalf() {
        m_stops = true;
        join();
    }
    OtherHalf(const OtherHalf&) = delete;
    OtherHalf& operator=(const OtherHalf&) = delete;

    // Waits for it. Null when it cannot be recorded apart, or memory ran out.
    ADisplayRecorder* get() {
        join();
        return m_isComplete ? &*m_recorder : nullptr;
    }

private:
    void join() {
        if (m_thread.joinable()) m_thread.join();
    }

    void run() {
        try {
            m_recorder.emplace(m_document);
            record();
        } catch (...) {
            // The other thread records this half, too, and tells what goes wrong there.
        }
        if (!m_isComplete) m_recorder.reset();
    }

    void record() {
        const std::unique_ptr<AObjectPainter> painter = startRecording(m_document, *m_recorder);
        if (!m_recorder->isUntouched()) return;
        const auto paint = [&](const AObject& object) {
            if (!m_stops) painter->paint(object, {});
        };
        AShownWalk walk(*painter, paint);
        // A group around both halves is one.
        if (!walk.walkFrom(m_document.getDatabase(), m_first, [&] { return m_recorder->isUntouched(); }))
            return;
        painter->finish();
        m_isComplete = true;
    }

    ADocument& m_document;
    const AObject& m_first;
    std::optional<ADisplayRecorder> m_recorder;
    bool m_isComplete = false;
    std::atomic<bool> m_stops{false};
    std::thread m_thread;  // the last: it uses all that stands above
};

std::unique_ptr<OtherHalf> startOtherHalf(ADocument& document, const AObject* first) {
    if (!first) return nullptr;
    try {
        return std::make_unique<OtherHalf>(document, *first);
    } catch (const std::system_error&) {
        return nullptr;
    }
}

std::shared_ptr<const ADisplayList> makeList(ADocument& document, bool inHalves) {
    ADisplayRecorder recorder(document);
    // The halves start at once; one that proves to be no half is given up.
    const AObject* const middle = inHalves ? middleOf(document) : nullptr;
    std::unique_ptr<OtherHalf> other = startOtherHalf(document, middle);
    std::unique_ptr<AObjectPainter> painter = startRecording(document, recorder);
    if (!recorder.isUntouched()) other.reset();
    const auto paint = [&](const AObject& object) { painter->paint(object, {}); };
    walkShown(document.getSecondaryDatabase(), *painter, paint);
    AShownWalk walk(*painter, paint);
    if (other) {
        walk.setEnd(*middle, [&] {
            ADisplayRecorder* const recorded = recorder.isOpen() ? nullptr : other->get();
            const bool isAppended = recorded && recorder.append(std::move(*recorded));
            other.reset();
            return isAppended;
        });
    }
    walk.walkLayers(document.getDatabase());
    other.reset();
    painter->finish();
    painter.reset();
    return recorder.finish();
}

}  // namespace

std::shared_ptr<const ADisplayList> makeDisplayList(ADocument& document, unsigned threads) {
    const std::size_t objects = document.getObjectCount();
    if (threads == 0 && objects >= kWorthAThread) threads = std::thread::hardware_concurrency();
    if (threads < 2 || objects < 2) return makeList(document, false);
    try {
        return makeList(document, true);
    } catch (const std::bad_alloc&) {
        // Two trees of the drawing may be too many.
        return makeList(document, false);
    }
}

std::shared_ptr<const ADisplayList> makeDisplayList(ADocument& document) {
    return makeDisplayList(document, 0);
}

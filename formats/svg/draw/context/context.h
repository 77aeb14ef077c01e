// What everything that draws an element shares: the tree, the styles, the canvas, and bounds on the work.
//
//     void paintMarker(DrawContext& context, pugi::xml_node marker, …) {
//         const DrawContext::Visit visit(context, marker);
//         if (!visit) return;                       // it is being drawn already, or too much was drawn
//         UserSpace space = …;                      // from the marker's content to the canvas's pixels
//         context.paintChildren(marker, context.styleAt(marker), space);
//     }
//
// In pictures UserSpace::toDrawing leads to the pixels of the current canvas. Drawings are untrusted: enter
// whatever a reference leads to through a Visit.
#pragma once

#include <array>
#include <memory>
#include <utility>
#include <vector>

#include "formats/svg/draw/context/drawing_tree.h"
#include "formats/svg/style/style_resolver.h"
#include "formats/svg/tree/user_space.h"
#include "kzcore/display/display_recorder.h"

namespace svg {

// What is kept from element to element of one picture. Each file that keeps something derives its own.
struct DrawCache {
    virtual ~DrawCache() = default;
};
enum class CacheOf : std::uint8_t {
    gradients,
    brushes,
    clips,
    groups,
    tiles,
    images,
    markers,
    filters,
    texts,
    count
};

// An element that is being drawn.
struct DrawnElement {
    pugi::xml_node node;
    const AttributeSet& attributes;
    const Style& style;
    // From the element's own user space, its transform included; what percentages refer to.
    const UserSpace& space;
};

// What context-fill and context-stroke stand for inside: the paints of a marker's shape or of a "use".
struct ContextPaint {
    Style style;
    UserSpace space;  // that of the shape, to the pixels of the canvas that was drawn on then
    AFRect box;       // of the shape
    AAffine place;    // DrawContext::place() then
    const ContextPaint* outer = nullptr;
};

class DrawContext {
public:
    DrawContext(const std::string& text, const UserSpace& root, ACanvas& canvas);
    // Records a display list: pixels are then units of the drawing, and everything can be reached.
    DrawContext(const std::string& text, const UserSpace& root, ADisplayRecorder& recorder);
    virtual ~DrawContext();
    DrawContext(const DrawContext&) = delete;
    DrawContext& operator=(const DrawContext&) = delete;

    DrawingTree& tree() { return m_tree; }

    // Whether something in the drawing has a mix-blend-mode.
    bool blends() const { return m_blends; }

    // Whether something in the drawing is painted like what it stands in.
    bool usesContextPaint() const { return m_usesContextPaint; }
    // Whether something in the drawing asks for lines under, over or through texts.
    bool hasDecorations() const { return m_hasDecorations; }
    const ContextPaint* contextPaint() const { return m_contextPaint; }
    void setContextPaint(const ContextPaint* paint) { m_contextPaint = paint; }
    // From the pixels of the picture to those of the canvas that is drawn on.
    const AAffine& place() const { return m_place; }

    // Another drawing inside this one takes what it costs from the same budgets. False where this one is inside
    // another itself: one in one is enough.
    bool lendTo(DrawContext& inner);
    void takeBack(const DrawContext& inner);

    // Starts anew on another canvas, at another scale.
    void restart(const UserSpace& root, ACanvas& canvas);

    // Where drawing is recorded; null where it is drawn, as on the images that a recording needs itself.
    ADisplayRecorder* recorder() { return m_recorder; }
    // On what is drawn on now: the device's canvas, or that of a group, or the recorder.
    void fill(const APath& path, const AAffine& toPixels, const APaint& paint, EFillRule rule);
    void stroke(const APath& path, const AAffine& toPixels, const APaint& paint, const AStrokeStyle& style);
    void fill(const ATextShape& text, const AAffine& toPixels, const APaint& paint, EFillRule rule);
    void stroke(const ATextShape& text, const AAffine& toPixels, const APaint& paint,
                const AStrokeStyle& style);
    // Not to a recorder.
    void drawImage(const AImage& image, const AAffine& toPixels, double opacity, bool smooth, EBlend blend);
    // Of the current canvas, kept up to date by pushClip and popClip; cheaper than asking it.
    const RECT& clipBounds() const { return m_clipBounds; }
    void pushClip(const APath& path, const AAffine& toPixels, EFillRule rule);
    void popClip();
    // Call it with the pixels that are about to be drawn on, or more: only the touched part of a group's
    // picture is put on the canvas below.
    void touch(const RECT& area);
    const RECT& touched() const { return m_touched; }

    // While it lives, drawing goes to another canvas.
    class OnCanvas {
    public:
        // `place`: from the pixels of the canvas before to those of the new one.
        OnCanvas(DrawContext& context, ACanvas& canvas, const AAffine& place = {});
        ~OnCanvas();
        OnCanvas(const OnCanvas&) = delete;
        OnCanvas& operator=(const OnCanvas&) = delete;

    private:
        DrawContext& m_context;
        ACanvas* m_before;
        ADisplayRecorder* m_recorderBefore;
        RECT m_boundsBefore;
        RECT m_touchedBefore;
        AAffine m_placeBefore;
    };

    // Marks an element that a reference led to as being drawn. False when it is being drawn already (it would
    // draw itself for ever), references lead too deep, or the picture has repeated too much.
    class Visit {
    public:
        Visit(DrawContext& context, pugi::xml_node node)
            : m_context(context), m_entered(context.enterReference(node)) {}
        ~Visit() {
            if (m_entered) m_context.leaveReference();
        }
        Visit(const Visit&) = delete;
        Visit& operator=(const Visit&) = delete;
        explicit operator bool() const { return m_entered; }

    private:
        DrawContext& m_context;
        bool m_entered;
    };
    // The same for those that keep the order themselves.
    bool enterReference(pugi::xml_node node);
    void leaveReference() { m_visited.pop_back(); }
    // Takes elements (or a similar amount of work) from the budget of repetition; false when it is spent.
    bool spend(std::size_t elements);
    // What of that budget was taken, and how much it was.
    std::size_t spent() const { return mostRepeated() - m_repeatable; }
    std::size_t mostRepeated() const;

    // Pixels of images that something is drawn into at the same time: groups, masks, patterns in one another.
    // False when there are too many: make no image then.
    class HeldPixels {
    public:
        explicit HeldPixels(DrawContext& context) : m_context(context) {}
        ~HeldPixels() { release(); }
        HeldPixels(const HeldPixels&) = delete;
        HeldPixels& operator=(const HeldPixels&) = delete;
        bool take(std::size_t pixels);
        void release() { m_context.m_heldPixels -= std::exchange(m_pixels, 0); }

    private:
        DrawContext& m_context;
        std::size_t m_pixels = 0;
    };

    // Takes pixels times simple operations from the budget of the picture, for what masks, patterns, filters
    // and images do to whole images. False when it is spent: leave the operation out.
    bool spendPixels(double pixels);

    // The computed style of an element inside one of the style `parent`: `room`, or the parent's own.
    // `around`: the user space in which the element stands, which percentages refer to.
    const Style& styleOf(pugi::xml_node element, const AttributeSet& attributes, const Style& parent,
                         const UserSpace& around, Style& room) {
        return m_styles.compute(element, attributes, {parent, around.width, around.height}, room);
    }
    // The style of an element as it stands in the tree, with what it inherits there: for patterns, markers,
    // masks and clip paths, which do not inherit from what refers to them. It counts as displayed, as
    // definitions show wherever they stand.
    Style styleAt(pugi::xml_node element);
    const UserSpace& rootSpace() const { return m_root; }

    // Draws the children of an element with all their content on the current canvas. `style`, `space`: those
    // of the element. No view filter is asked.
    virtual void paintChildren(pugi::xml_node parent, const Style& style, const UserSpace& space) = 0;
    // The extent of an element's geometry with its content, without strokes, in its own user space: what
    // objectBoundingBox units refer to. The element's own transform is not included.
    virtual AFRect boundsOf(const DrawnElement& element) = 0;
    // Draws an element with all its content where it stands in the user space `space`, as a "use" does.
    virtual void paintElement(pugi::xml_node element, const Style& style, const UserSpace& space) = 0;
    // Draws the picture in a data URI. `viewport`: where, in user space; `aspect`: as preserveAspectRatio says.
    virtual void paintUri(std::string_view uri, const AFRect& viewport, std::string_view aspect,
                          const UserSpace& space, bool smooth) = 0;

    // Made when first asked for.
    template <class Cache>
    Cache& cache(CacheOf which) {
        std::unique_ptr<DrawCache>& slot = m_caches[static_cast<std::size_t>(which)];
        if (!slot) slot = std::make_unique<Cache>();
        return static_cast<Cache&>(*slot);
    }

private:
    DrawContext(const std::string& text, const UserSpace& root);

    DrawingTree m_tree;
    StyleResolver m_styles;
    UserSpace m_root;
    bool m_blends;
    bool m_usesContextPaint;
    bool m_hasDecorations;
    bool m_isInner = false;
    const ContextPaint* m_contextPaint = nullptr;
    AAffine m_place;
    ACanvas* m_canvas;
    ADisplayRecorder* m_recorder = nullptr;
    APath m_letters;  // scratch
    RECT m_clipBounds;
    RECT m_touched{0, 0, 0, 0};
    std::vector<pugi::xml_node> m_visited;
    double m_pixelSteps;  // that may still be done
    std::size_t m_repeatable;
    std::size_t m_heldPixels = 0;
    std::array<std::unique_ptr<DrawCache>, static_cast<std::size_t>(CacheOf::count)> m_caches;
};

// The box that objectBoundingBox units stand for, as a transform from the unit square; false for a box
// without width or height, which such units do not apply to.
bool boxUnits(const AFRect& box, AAffine& fromUnits);

// An attribute by name, for those that no table knows; empty when it is not there.
inline std::string_view textOf(pugi::xml_node node, const char* attribute) {
    return node.attribute(attribute).value();
}

}  // namespace svg

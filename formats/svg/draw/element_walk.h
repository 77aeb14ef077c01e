// Walks down elements as they are drawn: the open containers with their styles, user spaces and compositing,
// and the shapes, texts and images inside.
//
// The painter of a document opens and closes containers as the model tells; what the model does not hold
// (masks, patterns, objects that are drawn by a group) is walked here, without recursion, since elements may
// be nested a thousand deep.
#pragma once

#include <memory>
#include <vector>

#include "formats/svg/draw/compositing.h"
#include "formats/svg/draw/context/context.h"
#include "formats/svg/draw/paint/paint_source.h"
#include "formats/svg/draw/text/text.h"

namespace svg {

class ElementWalk {
public:
    // Starts inside an element of that style and user space.
    ElementWalk(DrawContext& context, const Style& style, const UserSpace& space);
    ~ElementWalk();
    ElementWalk(const ElementWalk&) = delete;
    ElementWalk& operator=(const ElementWalk&) = delete;

    const Style& style() const { return m_levels.back().style; }
    const UserSpace& space() const { return m_levels.back().space; }

    // Opens a container for what stands in it; false when nothing inside can be seen, then it is not open.
    // A layer shows or not as the model says, whatever its element's display says.
    enum class Display { ofElement, ofModel };
    bool open(pugi::xml_node container, Element element, Display display);
    // Opens a container whose effects and clips are somebody else's.
    void openAround(pugi::xml_node container, Element element);
    // Opens something that is not in the drawing: nothing changes inside.
    void openPlain();
    void close();
    // For a walk that started in the drawing's root: what the root itself does to its content, to
    // be closed behind it. False when nothing can be seen.
    bool beginRoot(pugi::xml_node root);

    // Paints an element that is not open: a shape, a text, an image, or a container with its content.
    void paint(pugi::xml_node element, const PaintSource& source);
    void paintChildren(pugi::xml_node parent, const PaintSource& source);

private:
    struct Level {
        Style style;
        UserSpace space;
        int clips = 0;
        std::unique_ptr<Compositing> compositing;
        std::unique_ptr<ContextPaint> paint;  // of a "use" for what it repeats
    };
    struct Frame {
        pugi::xml_node next;
        bool single = false;     // only `next` itself, not what follows it
        bool reference = false;  // that of a "use"
        bool opened = false;     // a level is to be closed behind it
    };

    void run(const PaintSource& source);
    void step(pugi::xml_node node, bool inUse, const PaintSource& source);
    void readOwnTransform(pugi::xml_node node, const Style& style);
    void lendPaint(pugi::xml_node use);
    void paintBackground(const Style& style, const AttributeSet& root);
    void enterContainer(pugi::xml_node node, Element element);
    void paintLeaf(pugi::xml_node node, Element element, const PaintSource& source);
    void paintDrawn(const DrawnElement& drawn, Element element, const PaintSource& source);
    void paintShape(const DrawnElement& shape, Element element, const PaintSource& source);
    struct Parts {
        bool fill, stroke, markers;
        double opacity;
    };
    void paintParts(const DrawnElement& shape, Element element, const PaintSource& source, const Parts& parts,
                    BoundingBox& box);
    static double dashScale(const APath& outline, const DrawnElement& shape);
    template <class Outline>
    void stroke(const Outline& outline, const Style& style, const UserSpace& space, const APaint& paint,
                double dashScale = 1);
    void paintText(const DrawnElement& text, const PaintSource& source);
    void paintPieces(const DrawnElement& text, const PaintSource& source, const AFRect& box, double opacity);
    void paintPicture(const DrawnElement& image);

    DrawContext& m_context;
    std::vector<Level> m_levels;
    std::vector<Frame> m_frames;
    // Scratch, so that the next shape needs no memory of its own.
    AttributeSet m_attributes;
    Style m_room;
    APath m_outline;
    std::vector<TextPiece> m_pieces;
    AStrokeStyle m_stroke;
};

// What a "use" repeats; null when there is nothing, or it would repeat itself for ever.
pugi::xml_node useTarget(DrawContext& context, pugi::xml_node use);

}  // namespace svg

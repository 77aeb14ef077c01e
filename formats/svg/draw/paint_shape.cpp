// What an element walk paints: shapes, texts, images.
#include <algorithm>

#include "formats/svg/draw/context/pixel_area.h"
#include "formats/svg/draw/element_walk.h"
#include "formats/svg/draw/images.h"
#include "formats/svg/draw/markers.h"
#include "formats/svg/draw/shapes.h"

namespace svg {

namespace {

// How much longer a length becomes at most.
double largestScale(const AAffine& t) {
    return std::max(std::hypot(t.a, t.b), std::hypot(t.c, t.d)) * std::sqrt(2.0);
}

// How far a stroke reaches from its outline, in pixels.
double strokeReach(const Style& style, const UserSpace& space) {
    const double corners = style.lineJoin == ELineJoin::miter ? std::max(style.miterLimit, 1.5) : 1.5;
    const double scale = style.own.keepsStrokeWidth ? 1e3 : largestScale(space.toDrawing);
    return style.strokeWidth / 2 * corners * scale;
}

bool samePaint(const Paint& a, const Paint& b) {
    return a.kind == b.kind && a.fallback == b.fallback && a.alpha == b.alpha && a.rgb == b.rgb &&
           a.text == b.text;
}

void append(APath& path, const APath& outline, const AAffine& transform) {
    path.append(outline, transform);
}
void append(APath& path, const ATextShape& outline, const AAffine& transform) {
    outline.appendTo(path, transform);
}

bool canHaveMarkers(Element element) {
    return element == Element::path || element == Element::line || element == Element::polyline ||
           element == Element::polygon;
}

// Whether the opacity is all that compositing has to do.
bool isOpacityOnly(const Style& style) {
    return style.own.clipPath.empty() && style.own.mask.empty() && style.own.filter.empty() &&
           style.own.blend == EBlend::normal;
}

// The effects of parts of a text, opened and closed as its pieces come.
class TextEffects {
public:
    TextEffects(DrawContext& context, const DrawnElement& text, BoundingBox& box)
        : m_context(context), m_text(text), m_box(box) {}
    // Left without an end, the canvas is as before.
    ~TextEffects() {
        while (!m_open.empty()) m_open.pop_back();
    }
    TextEffects(const TextEffects&) = delete;
    TextEffects& operator=(const TextEffects&) = delete;

    // Goes to what lies in this part, or in none. False: it cannot be seen.
    bool enter(const TextEffect* effect) {
        std::vector<const TextEffect*> chain;
        for (; effect; effect = effect->outer.get()) chain.push_back(effect);
        std::reverse(chain.begin(), chain.end());
        std::size_t common = 0;
        while (common < m_open.size() && common < chain.size() && m_open[common].effect == chain[common])
            ++common;
        leave(common);
        for (std::size_t i = common; i < chain.size() && isSeen(); ++i) open(*chain[i]);
        return isSeen();
    }
    void end() { leave(0); }
    const UserSpace& space() const {
        return m_open.empty() ? m_text.space : m_open.back().compositing->space();
    }

private:
    struct Open {
        const TextEffect* effect;
        std::unique_ptr<Compositing> compositing;  // null: nothing can be seen
    };

    bool isSeen() const { return m_open.empty() || m_open.back().compositing; }

    void open(const TextEffect& effect) {
        const UserSpace around = space();
        auto compositing = std::make_unique<Compositing>(m_context);
        const DrawnElement part{effect.node, m_text.attributes, effect.style, around};
        if (!compositing->begin(part, m_box, nullptr, effect.style.own.opacity)) compositing.reset();
        if (compositing) m_context.touch(m_context.clipBounds());
        m_open.push_back({&effect, std::move(compositing)});
    }

    void leave(std::size_t count) {
        for (; m_open.size() > count; m_open.pop_back()) {
            if (m_open.back().compositing) m_open.back().compositing->end();
        }
    }

    DrawContext& m_context;
    const DrawnElement& m_text;
    BoundingBox& m_box;
    std::vector<Open> m_open;
};

}  // namespace

void ElementWalk::paintShape(const DrawnElement& shape, Element element, const PaintSource& source) {
    const Style& style = shape.style;
    const bool shows = source.object || style.visible;
    const bool fills = shows && element != Element::line && hasFill(source, style);
    const bool strokes = shows && hasStroke(source, style);
    const bool markers = shows && canHaveMarkers(element) && hasMarkers(style) && source.visible.stroke;
    // A filter makes something of nothing.
    if (!fills && !strokes && !markers && style.own.filter.empty()) return;
    m_outline.clear();
    appendShape(element, shape.attributes, shape.space, style.fontSize, m_outline);
    if (m_outline.empty()) return;

    const double margin = 1 + (strokes ? strokeReach(style, shape.space) : 0);
    const RECT reach = pixelsAround(rectBounds(shape.space.toDrawing, m_outline.bounds()), margin);
    const bool outside = isEmpty(intersection(reach, m_context.clipBounds()));
    if (outside && !markers && style.own.filter.empty()) return;

    // One colour can carry the opacity by itself.
    const bool simple = (fills ? 1 : 0) + (strokes ? 1 : 0) == 1 && !markers && style.own.filter.empty();
    const double opacity = style.own.opacity;
    BoundingBox box(m_outline);
    if (!hasEffects(style) || (simple && isOpacityOnly(style))) {
        m_context.touch(reach);
        return paintParts(shape, element, source, {fills, strokes, markers, opacity}, box);
    }
    Compositing compositing(m_context);
    if (!compositing.begin(shape, box, markers ? nullptr : &reach, simple ? 1 : opacity)) return;
    m_context.touch(m_context.clipBounds());
    paintParts({shape.node, shape.attributes, style, compositing.space()}, element, source,
               {fills, strokes, markers, simple ? opacity : 1}, box);
    compositing.end();
}

void ElementWalk::paintParts(const DrawnElement& shape, Element element, const PaintSource& source,
                             const Parts& parts, BoundingBox& box) {
    const Style& style = shape.style;
    APaint paint;
    for (const PaintPart part : style.paintOrder) {
        if (part == PaintPart::fill && parts.fill) {
            if (fillPaint(m_context, source, style, shape.space, box, parts.opacity, paint))
                m_context.fill(m_outline, shape.space.toDrawing, paint, style.fillRule);
        } else if (part == PaintPart::stroke && parts.stroke) {
            if (strokePaint(m_context, source, style, shape.space, box, parts.opacity, paint))
                stroke(m_outline, style, shape.space, paint, dashScale(m_outline, shape));
        } else if (part == PaintPart::markers && parts.markers) {
            APath path;
            appendShape(element, shape.attributes, shape.space, style.fontSize, path, Arcs::oneCurve);
            if (m_context.recorder()) m_context.recorder()->setPart(EPaintPart::stroke);
            paintMarkers(m_context, path, style, shape.space, box);
            if (m_context.recorder()) m_context.recorder()->setPart(std::nullopt);
        }
    }
}

// An outline may say how long it counts as; dashes are measured in that.
double ElementWalk::dashScale(const APath& outline, const DrawnElement& shape) {
    double counted = 0;
    if (shape.style.dashArray.empty() ||
        !parseLength(textOf(shape.node, "pathLength"), Axis::both, {}, counted) || counted < 0) {
        return 1;
    }
    const double length = outlineLength(outline);
    return counted > 0 ? finite(length / counted) : 0;
}

template <class Outline>
void ElementWalk::stroke(const Outline& outline, const Style& style, const UserSpace& space,
                         const APaint& paint, double dashScale) {
    m_stroke.width = style.strokeWidth;
    m_stroke.cap = style.lineCap;
    m_stroke.join = style.lineJoin;
    m_stroke.miterLimit = style.miterLimit;
    m_stroke.dashes.clear();
    if (!style.dashArray.empty()) {
        parseDashes(style.dashArray, {style.fontSize, space.width, space.height}, m_stroke.dashes);
        m_stroke.dashOffset = style.dashOffset * dashScale;
        for (double& dash : m_stroke.dashes) dash *= dashScale;
        if (dashScale == 0) m_stroke.dashes.clear();
    }
    if (!style.own.keepsStrokeWidth) {
        m_context.stroke(outline, space.toDrawing, paint, m_stroke);
        return;
    }
    // The pen is that of the drawing as a whole, whatever transforms are around the element.
    const AAffine& root = m_context.rootSpace().toDrawing;
    const AAffine pen{root.a, root.b, root.c, root.d, 0, 0};
    const std::optional<AAffine> back = pen.inverse();
    if (!back) return;
    APath moved;
    append(moved, outline, *back * space.toDrawing);
    m_context.stroke(moved, pen, paint, m_stroke);
}

void ElementWalk::paintText(const DrawnElement& text, const PaintSource& source) {
    m_pieces.clear();
    layOutText(m_context, text, m_pieces);
    if (m_pieces.empty()) return;
    BoundsBuilder boxes;
    BoundsBuilder outlines;
    bool strokes = false;
    for (const TextPiece& piece : m_pieces) {
        boxes.add(piece.box);
        if (!piece.outline.empty()) outlines.add(piece.outline.bounds(AAffine()));
        strokes |= piece.style.stroke.kind != PaintKind::none;
    }
    const double margin = 1 + (strokes ? strokeReach(text.style, text.space) * 2 : 0);
    const RECT reach = pixelsAround(rectBounds(text.space.toDrawing, outlines.get()), margin);
    if (isEmpty(intersection(reach, m_context.clipBounds())) && text.style.own.filter.empty()) return;
    const AFRect box = boxes.get();
    const bool simple = m_pieces.size() == 1 && !strokes && text.style.own.filter.empty();
    const double opacity = text.style.own.opacity;
    if (!hasEffects(text.style) || (simple && isOpacityOnly(text.style))) {
        m_context.touch(reach);
        return paintPieces(text, source, box, opacity);
    }
    BoundingBox known(box);
    Compositing compositing(m_context);
    if (!compositing.begin(text, known, &reach, simple ? 1 : opacity)) return;
    m_context.touch(m_context.clipBounds());
    paintPieces({text.node, text.attributes, text.style, compositing.space()}, source, box,
                simple ? opacity : 1);
    compositing.end();
}

void ElementWalk::paintPieces(const DrawnElement& text, const PaintSource& source, const AFRect& box,
                              double opacity) {
    BoundingBox known(box);
    const PaintSource ownStyle{nullptr, source.visible};
    APaint paint;
    TextEffects effects(m_context, text, known);
    for (const TextPiece& piece : m_pieces) {
        if (!effects.enter(piece.effect.get())) continue;
        const UserSpace& space = effects.space();
        const Style& style = piece.style;
        // A part with a paint of its own is painted with that; the model holds the whole text's.
        const PaintSource& fill = samePaint(style.fill, text.style.fill) ? source : ownStyle;
        const PaintSource& line = samePaint(style.stroke, text.style.stroke) ? source : ownStyle;
        for (const PaintPart part : style.paintOrder) {
            if (part == PaintPart::fill && hasFill(fill, style) &&
                fillPaint(m_context, fill, style, space, known, opacity, paint))
                m_context.fill(piece.outline, space.toDrawing, paint, EFillRule::nonZero);
            if (part == PaintPart::stroke && hasStroke(line, style) &&
                strokePaint(m_context, line, style, space, known, opacity, paint))
                stroke(piece.outline, style, space, paint);
        }
    }
    effects.end();
}

void ElementWalk::paintPicture(const DrawnElement& image) {
    m_context.touch(m_context.clipBounds());
    const Style& style = image.style;
    if (!hasEffects(style) || isOpacityOnly(style)) return paintImage(m_context, image, style.own.opacity);
    BoundingBox box(m_context, image);
    Compositing compositing(m_context);
    if (!compositing.begin(image, box, nullptr, 1)) return;
    m_context.touch(m_context.clipBounds());
    paintImage(m_context, {image.node, image.attributes, style, compositing.space()}, style.own.opacity);
    compositing.end();
}

}  // namespace svg

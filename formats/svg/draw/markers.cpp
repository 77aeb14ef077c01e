#include "formats/svg/draw/markers.h"

#include <algorithm>
#include <cmath>
#include <numbers>
#include <optional>

#include "formats/svg/draw/compositing.h"
#include "formats/svg/values/text_scan.h"

namespace svg {

namespace {

// More vertices than this get none: they would cover each other.
constexpr std::size_t kMostMarkers = 100000;

// Where a marker may stand; a direction of no length is none.
struct Vertex {
    AFPoint at;
    AFPoint in;   // in which the outline arrives
    AFPoint out;  // in which it leaves
};

bool isSet(AFPoint direction) {
    return direction.x != 0 || direction.y != 0;
}

AFPoint difference(AFPoint to, AFPoint from) {
    return {to.x - from.x, to.y - from.y};
}

// The first that is a direction: control points may lie on the ends.
AFPoint firstSet(AFPoint a, AFPoint b, AFPoint c) {
    return isSet(a) ? a : isSet(b) ? b : c;
}

// The vertices of all figures. A segment of no length takes the direction of the one before.
std::vector<Vertex> verticesOf(const APath& path) {
    std::vector<Vertex> vertices;
    std::size_t figure = 0;  // its first vertex
    bool closed = false;
    path.forEachSegment([&](const APath::Segment& one) {
        if (one.verb == APath::EVerb::move || closed) {
            figure = vertices.size();
            // What follows a closed figure starts at its first point.
            vertices.push_back({one.verb == APath::EVerb::move ? one.to : one.from, {}, {}});
        }
        closed = one.verb == APath::EVerb::close;
        if (one.verb == APath::EVerb::move) return;
        AFPoint out = difference(one.to, one.from);
        AFPoint in = out;
        if (one.verb == APath::EVerb::curve) {
            out = firstSet(difference(one.control1, one.from), difference(one.control2, one.from), out);
            in = firstSet(difference(one.to, one.control2), difference(one.to, one.control1), in);
        }
        Vertex& from = vertices.back();
        from.out = isSet(out) ? out : from.in;
        vertices.push_back({one.to, isSet(in) ? in : from.out, {}});
        if (!closed) return;
        // The figure goes on where it started, so both ends have one direction.
        vertices.back().out = vertices[figure].out;
        vertices[figure].in = vertices.back().in;
    });
    return vertices;
}

double angleOf(const Vertex& vertex) {
    if (!isSet(vertex.in)) return isSet(vertex.out) ? std::atan2(vertex.out.y, vertex.out.x) : 0;
    const double in = std::atan2(vertex.in.y, vertex.in.x);
    if (!isSet(vertex.out)) return in;
    const double out = std::atan2(vertex.out.y, vertex.out.x);
    // Half way, the shorter way round.
    return in + std::remainder(out - in, 2 * std::numbers::pi) / 2;
}

// A marker element, read once for all its vertices.
class Marker {
public:
    Marker(DrawContext& context, pugi::xml_node node, const Style& shape, const UserSpace& space)
        : m_context(context), m_node(node), m_space(space), m_style(context.styleAt(node)) {
        m_attributes.read(node);
        const AttributeSet& plain = m_attributes;
        const LengthContext lengths{m_style.fontSize, space.width, space.height};
        const auto get = [&](const char* name, Axis axis, double missing) {
            double value = missing;
            parseLength(textOf(node, name), axis, lengths, value);
            return value;
        };
        m_width = get("markerWidth", Axis::horizontal, 3);
        m_height = get("markerHeight", Axis::vertical, 3);
        m_unit = equalsNoCase(textOf(node, "markerUnits"), "userspaceonuse") ? 1 : shape.strokeWidth;
        AFRect box{0, 0, m_width, m_height};
        const bool hasBox = plain.has(Attribute::viewBox);
        m_shows = m_width > 0 && m_height > 0 && m_unit > 0 && m_style.displayed &&
                  (!hasBox || parseViewBox(plain.get(Attribute::viewBox), box));
        if (!m_shows) return;
        if (hasBox) m_fit = fitViewBox(box, m_width, m_height, plain.get(Attribute::preserveAspectRatio));
        m_content = {{}, box.Width(), box.Height()};
        const AFPoint point =
            m_fit.apply({reference("refX", box.left, box.Width(), lengths, Axis::horizontal),
                         reference("refY", box.top, box.Height(), lengths, Axis::vertical)});
        m_fit = translation(-point.x, -point.y) * m_fit;
        m_frame = {-point.x, -point.y, m_width - point.x, m_height - point.y};
        readOrient(trim(textOf(node, "orient")));
    }

    void paint(const Vertex& vertex, bool isStart) {
        if (!m_shows || !std::isfinite(vertex.at.x) || !std::isfinite(vertex.at.y)) return;
        double angle = m_angle;
        if (m_follows) angle = angleOf(vertex) + (isStart && m_reversesStart ? std::numbers::pi : 0);
        const double sine = std::sin(angle) * m_unit;
        const double cosine = std::cos(angle) * m_unit;
        const Affine placed =
            m_space.toDrawing * Affine{cosine, sine, -sine, cosine, vertex.at.x, vertex.at.y};
        if (!placed.isFinite() || !isVisible(placed) || !m_context.spend(1)) return;
        UserSpace space = m_content;
        space.toDrawing = placed * m_fit;
        if (!hasEffects(m_style)) return paintContent(space, placed);
        const DrawnElement drawn{m_node, m_attributes, m_style, space};
        BoundingBox box(m_context, drawn);
        Compositing compositing(m_context);
        if (!compositing.begin(drawn, box, nullptr, m_style.own.opacity)) return;
        paintContent(compositing.space(), compositing.shift() * placed);
        compositing.end();
    }

private:
    void paintContent(const UserSpace& space, const Affine& placed) {
        const bool clips = !m_style.own.showsOverflow;
        if (clips) m_context.pushClip(APath::rectangle(m_frame), placed, EFillRule::nonZero);
        m_context.paintChildren(m_node, m_style, space);
        if (clips) m_context.popClip();
    }

    // A number in the units of the content, or a word for a side of the view box.
    double reference(const char* name, double start, double size, const LengthContext& lengths, Axis axis) {
        const std::string_view text = trim(textOf(m_node, name));
        if (text == "left" || text == "top") return start;
        if (text == "center") return start + size / 2;
        if (text == "right" || text == "bottom") return start + size;
        double value = 0;
        parseLength(text, axis, {lengths.fontSize, size, size}, value);
        return value;
    }

    void readOrient(std::string_view text) {
        m_reversesStart = equalsNoCase(text, "auto-start-reverse");
        m_follows = m_reversesStart || equalsNoCase(text, "auto");
        double value = 0;
        if (m_follows || !takeNumber(text, value)) return;
        struct Unit {
            std::string_view name;
            double turns;
        };
        constexpr Unit kUnits[] = {{"", 1.0 / 360},
                                   {"deg", 1.0 / 360},
                                   {"grad", 1.0 / 400},
                                   {"rad", 0.5 / std::numbers::pi},
                                   {"turn", 1}};
        for (const Unit& unit : kUnits) {
            if (equalsNoCase(text, unit.name))
                m_angle = std::remainder(value * unit.turns, 1) * 2 * std::numbers::pi;
        }
    }

    // Whether a marker that keeps to its frame can be seen: outlines may have vertices far outside.
    bool isVisible(const Affine& placed) const {
        if (m_style.own.showsOverflow) return true;
        const RECT& clip = m_context.clipBounds();
        const AFRect box = rectBounds(placed, m_frame);
        return box.left < clip.right && box.right > clip.left && box.top < clip.bottom &&
               box.bottom > clip.top;
    }

    DrawContext& m_context;
    pugi::xml_node m_node;
    const UserSpace& m_space;
    AttributeSet m_attributes;
    Style m_style;
    double m_width = 0, m_height = 0;
    double m_unit = 1;
    bool m_shows = false;
    Affine m_fit;         // from the content to the frame, the reference point at 0, 0
    AFRect m_frame;       // what the marker is cut to
    UserSpace m_content;  // for percentages
    bool m_follows = false, m_reversesStart = false;
    double m_angle = 0;  // where it does not follow the outline
};

pugi::xml_node findMarker(DrawContext& context, std::string_view property) {
    std::string_view id;
    if (property.empty() || !takeUrl(property, id)) return {};
    const pugi::xml_node node = context.tree().findAny(id);
    return kindOf(node) == Element::marker ? node : pugi::xml_node();
}

}  // namespace

void paintMarkers(DrawContext& context, const APath& outline, const Style& style, const UserSpace& space,
                  BoundingBox& box) {
    const RECT& clip = context.clipBounds();
    if (outline.empty() || clip.left >= clip.right || clip.top >= clip.bottom) return;
    const std::vector<Vertex> vertices = verticesOf(outline);
    if (vertices.size() > kMostMarkers) return;
    // The first vertex has the start marker, the last one the end marker, also when they are the same.
    const std::size_t last = vertices.size() - 1;
    struct Use {
        std::string_view property;
        std::size_t first, end;
    };
    const Use uses[] = {{style.markerStart, 0, 1},
                        {style.markerMid, 1, std::max<std::size_t>(last, 1)},
                        {style.markerEnd, last, last + 1}};
    ContextPaint paint;
    const ContextPaint* const around = context.contextPaint();
    if (context.usesContextPaint()) {
        const bool needsBox =
            style.fill.kind == PaintKind::reference || style.stroke.kind == PaintKind::reference;
        paint = {style, space, needsBox ? box.get() : AFRect(), context.place(), around};
        context.setContextPaint(&paint);
    }
    for (const Use& use : uses) {
        const pugi::xml_node node = findMarker(context, use.property);
        if (!node || use.first >= use.end) continue;
        const DrawContext::Visit visit(context, node);
        if (!visit) continue;
        Marker marker(context, node, style, space);
        for (std::size_t i = use.first; i < use.end; ++i) marker.paint(vertices[i], &use == uses);
    }
    context.setContextPaint(around);
}

}  // namespace svg

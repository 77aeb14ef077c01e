// APath: an outline of lines and cubic curves, to be filled or stroked by a device.
//
//     APath path;
//     path.moveTo({0, 0});
//     path.lineTo({10, 0});
//     path.curveTo({10, 5}, {5, 10}, {0, 10});
//     path.close();
//
// Every figure starts with moveTo; a segment without one starts at its own first point.
#pragma once

#include <cstdint>
#include <span>
#include <vector>

#include "kzutil/affine.h"
#include "kzutil/rect.h"

class APath {
public:
    enum class EVerb : std::uint8_t { move, line, curve, close };

    static APath rectangle(const AFRect& rect);

    void moveTo(AFPoint to);
    void lineTo(AFPoint to);
    void curveTo(AFPoint control1, AFPoint control2, AFPoint to);
    void close();
    // Empty again; keeps its memory.
    void clear();
    // Becomes these verbs with their points, the first a move; keeps its memory.
    void assign(std::span<const EVerb> verbs, std::span<const AFPoint> points) {
        m_verbs.assign(verbs.begin(), verbs.end());
        m_points.assign(points.begin(), points.end());
    }
    // Appends the figures of another path, every point transformed.
    void append(const APath& other, const AAffine& transform);

    bool empty() const { return m_verbs.empty(); }
    // A move and a line have one point, a curve three, a close none.
    const std::vector<EVerb>& verbs() const { return m_verbs; }
    const std::vector<AFPoint>& points() const { return m_points; }

    // A verb with the points that it leads along. A move and a close have no control points; a close leads to
    // the start of its figure.
    struct Segment {
        EVerb verb;
        AFPoint from;
        AFPoint control1, control2;  // of a curve
        AFPoint to;
    };
    // Calls use(const Segment&) for every verb, in order.
    template <class Use>
    void forEachSegment(Use use) const {
        const AFPoint* point = m_points.data();
        Segment segment{};
        AFPoint figure;
        for (const EVerb verb : m_verbs) {
            segment.verb = verb;
            segment.from = segment.to;
            if (verb == EVerb::curve) {
                segment.control1 = *point++;
                segment.control2 = *point++;
            }
            segment.to = verb == EVerb::close ? figure : *point++;
            if (verb == EVerb::move) figure = segment.to;
            use(static_cast<const Segment&>(segment));
        }
    }

    // False when a coordinate is infinite or no number.
    bool isFinite() const;
    // Of all points, control points included: the outline lies within.
    AFRect bounds() const;

    // The path with every point at (x * scale + dx, y * scale + dy).
    APath scaled(double scale, double dx, double dy) const;

private:
    std::vector<EVerb> m_verbs;
    std::vector<AFPoint> m_points;
};

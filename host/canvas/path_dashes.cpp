#include "canvas/path_dashes.h"

#include <algorithm>
#include <cmath>

namespace {

using Points = std::vector<AFPoint>;

struct Figure {
    Points points;  // neighbours differ
    bool closed = false;
    bool hasSegments = false;
};

AFPoint between(AFPoint a, AFPoint b, double part) {
    return {a.x + (b.x - a.x) * part, a.y + (b.y - a.y) * part};
}

double distance(AFPoint a, AFPoint b) {
    return std::hypot(b.x - a.x, b.y - a.y);
}

bool isSame(AFPoint a, AFPoint b) {
    return a.x == b.x && a.y == b.y;
}

void add(Points& points, AFPoint to) {
    if (points.empty() || !isSame(points.back(), to)) points.push_back(to);
}

void addCurve(Points& points, AFPoint b, AFPoint c, AFPoint d, double tolerance) {
    const AFPoint a = points.back();
    // A cubic curve is nowhere farther from its chords than 3/4 of the largest second difference of its
    // points, divided by the square of their number.
    const double bend = std::max(std::hypot(a.x - 2 * b.x + c.x, a.y - 2 * b.y + c.y),
                                 std::hypot(b.x - 2 * c.x + d.x, b.y - 2 * c.y + d.y));
    constexpr double kMostLines = 4096;
    const double count = std::clamp(std::ceil(std::sqrt(0.75 * bend / tolerance)), 1.0, kMostLines);
    for (double i = 1; i < count; ++i) {
        const double t = i / count;
        const AFPoint bc = between(b, c, t);
        add(points, between(between(between(a, b, t), bc, t), between(bc, between(c, d, t), t), t));
    }
    add(points, d);
}

std::vector<Figure> figuresOf(const APath& path, double tolerance) {
    std::vector<Figure> figures;
    const AFPoint* point = path.points().data();
    for (APath::EVerb verb : path.verbs()) {
        if (verb == APath::EVerb::move) {
            figures.push_back({{*point++}, false, false});
            continue;
        }
        // What follows a close starts where the closed figure did.
        if (figures.back().closed) figures.push_back({{figures.back().points.front()}, false, false});
        Figure& figure = figures.back();
        figure.hasSegments = true;
        if (verb == APath::EVerb::line) {
            add(figure.points, *point++);
        } else if (verb == APath::EVerb::curve) {
            addCurve(figure.points, point[0], point[1], point[2], tolerance);
            point += 3;
        } else {
            figure.closed = true;
        }
    }
    return figures;
}

void append(APath& path, const Points& points) {
    path.moveTo(points.front());
    for (std::size_t i = 1; i < points.size(); ++i) path.lineTo(points[i]);
}

// Where in the list of dashes a line is. Even places are drawn, odd ones are gaps.
class Pattern {
public:
    Pattern(const std::vector<double>& dashes, double offset) : m_lengths(dashes) {
        if (m_lengths.size() % 2 != 0) m_lengths.insert(m_lengths.end(), dashes.begin(), dashes.end());
        double sum = 0;
        for (double length : m_lengths) sum += length;
        double rest = std::fmod(offset, sum);
        if (rest < 0) rest += sum;
        m_left = m_lengths[0];
        while (rest >= m_left && rest > 0) {
            rest -= m_left;
            next();
        }
        m_left -= rest;
    }

    bool draws() const { return m_at % 2 == 0; }
    double left() const { return m_left; }
    void advance(double by) { m_left -= by; }
    void next() {
        m_at = (m_at + 1) % m_lengths.size();
        m_left = m_lengths[m_at];
    }

private:
    std::vector<double> m_lengths;
    std::size_t m_at = 0;
    double m_left = 0;
};

void finishDot(std::vector<Points>& dashes, AFPoint along, double dot) {
    const AFPoint at = dashes.back().front();
    dashes.back().push_back({at.x + along.x * dot, at.y + along.y * dot});
    if (!(dot > 0)) dashes.pop_back();
}

void dashFigure(APath& result, const Figure& figure, Pattern pattern, double dot) {
    Points points = figure.points;
    if (figure.closed) add(points, points.front());
    std::vector<Points> dashes;
    const bool startsDrawn = pattern.draws();
    bool drawing = startsDrawn;
    if (drawing) dashes.push_back({points.front()});
    for (std::size_t i = 1; i < points.size(); ++i) {
        const AFPoint from = points[i - 1];
        const AFPoint to = points[i];
        const double length = distance(from, to);
        const AFPoint along{(to.x - from.x) / length, (to.y - from.y) / length};
        double done = 0;
        while (length - done >= pattern.left()) {
            done += pattern.left();
            const AFPoint at = between(from, to, done / length);
            if (drawing) {
                add(dashes.back(), at);
                if (dashes.back().size() == 1) finishDot(dashes, along, dot);
            }
            pattern.next();
            drawing = pattern.draws();
            if (drawing) dashes.push_back({at});
        }
        pattern.advance(length - done);
        if (drawing) add(dashes.back(), to);
    }
    // A dash that would start where the line ends.
    if (drawing && dashes.back().size() == 1) {
        dashes.pop_back();
        drawing = false;
    }
    if (figure.closed && startsDrawn && drawing && dashes.size() > 1 &&
        isSame(dashes.front().front(), points.front())) {
        Points& last = dashes.back();
        last.insert(last.end(), dashes.front().begin() + 1, dashes.front().end());
        dashes.front() = std::move(last);
        dashes.pop_back();
    }
    for (const Points& dash : dashes) append(result, dash);
    // One dash all the way round.
    if (figure.closed && startsDrawn && drawing && dashes.size() == 1 && isSame(dashes[0].back(), points[0]))
        result.close();
}

bool isDot(const Figure& figure) {
    return figure.points.size() == 1 && figure.hasSegments;
}

void appendDot(APath& path, AFPoint at, double dot) {
    if (!(dot > 0)) return;
    path.moveTo(at);
    path.lineTo({at.x + dot, at.y});
}

}  // namespace

APath dashedPath(const APath& path, const std::vector<double>& dashes, double offset, double tolerance,
                 double dot) {
    const Pattern pattern(dashes, offset);
    APath result;
    for (const Figure& figure : figuresOf(path, tolerance)) {
        if (isDot(figure) && pattern.draws()) appendDot(result, figure.points.front(), dot);
        if (figure.points.size() > 1) dashFigure(result, figure, pattern, dot);
    }
    return result;
}

APath withDrawnDots(const APath& path, double dot) {
    APath result;
    const AFPoint* point = path.points().data();
    const std::vector<APath::EVerb>& verbs = path.verbs();
    for (std::size_t i = 0; i < verbs.size();) {
        const std::size_t first = i++;
        const AFPoint* start = point++;
        while (i < verbs.size() && verbs[i] != APath::EVerb::move) {
            point += verbs[i] == APath::EVerb::curve ? 3 : verbs[i] == APath::EVerb::line ? 1 : 0;
            ++i;
        }
        if (i == first + 1) continue;
        if (std::all_of(start, point, [&](AFPoint p) { return isSame(p, *start); })) {
            appendDot(result, *start, dot);
            continue;
        }
        for (std::size_t at = first; at < i; ++at) {
            switch (verbs[at]) {
                case APath::EVerb::move:
                    result.moveTo(*start++);
                    break;
                case APath::EVerb::line:
                    result.lineTo(*start++);
                    break;
                case APath::EVerb::curve:
                    result.curveTo(start[0], start[1], start[2]);
                    start += 3;
                    break;
                case APath::EVerb::close:
                    result.close();
                    break;
            }
        }
    }
    return result;
}

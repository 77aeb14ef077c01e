#include "canvas/cairo/path_cutting.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace {

using Curve = std::array<AFPoint, 4>;

// Halvings of a curve that crosses the box: enough for every zoom that a double can tell apart.
constexpr int kDepth = 56;

AFPoint between(AFPoint a, AFPoint b, double part) {
    return {a.x + (b.x - a.x) * part, a.y + (b.y - a.y) * part};
}

void halve(const Curve& whole, Curve& first, Curve& second) {
    const AFPoint ab = between(whole[0], whole[1], 0.5);
    const AFPoint bc = between(whole[1], whole[2], 0.5);
    const AFPoint cd = between(whole[2], whole[3], 0.5);
    const AFPoint abc = between(ab, bc, 0.5);
    const AFPoint bcd = between(bc, cd, 0.5);
    const AFPoint middle = between(abc, bcd, 0.5);
    first = {whole[0], ab, abc, middle};
    second = {middle, bcd, cd, whole[3]};
}

double distance(AFPoint a, AFPoint b) {
    return std::hypot(b.x - a.x, b.y - a.y);
}

double lengthOf(const Curve& curve) {
    constexpr int kParts = 64;
    double length = 0;
    AFPoint before = curve[0];
    for (int i = 1; i <= kParts; ++i) {
        const double t = static_cast<double>(i) / kParts;
        const AFPoint ab = between(curve[0], curve[1], t);
        const AFPoint bc = between(curve[1], curve[2], t);
        const AFPoint cd = between(curve[2], curve[3], t);
        const AFPoint at = between(between(ab, bc, t), between(bc, cd, t), t);
        length += distance(before, at);
        before = at;
    }
    return length;
}

enum class EPlace { inside, outside, across };

EPlace placeOf(const Curve& curve, const AFRect& box) {
    const auto [left, right] = std::minmax({curve[0].x, curve[1].x, curve[2].x, curve[3].x});
    const auto [top, bottom] = std::minmax({curve[0].y, curve[1].y, curve[2].y, curve[3].y});
    if (left >= box.left && right <= box.right && top >= box.top && bottom <= box.bottom)
        return EPlace::inside;
    if (left > box.right || right < box.left || top > box.bottom || bottom < box.top) return EPlace::outside;
    return EPlace::across;
}

// The part of a line within the box, from `first` to `last` of its length. False when there is none.
bool partWithin(AFPoint a, AFPoint b, const AFRect& box, double& first, double& last) {
    first = 0;
    last = 1;
    const auto cut = [&](double from, double by, double low, double high) {
        if (by == 0) return from >= low && from <= high;
        const double enter = ((by > 0 ? low : high) - from) / by;
        const double leave = ((by > 0 ? high : low) - from) / by;
        first = std::max(first, enter);
        last = std::min(last, leave);
        return first <= last;
    };
    return cut(a.x, b.x - a.x, box.left, box.right) && cut(a.y, b.y - a.y, box.top, box.bottom);
}

// Calls back for every segment: move(to), line(from, to), curve(points), close(from, start).
template <class Cutter>
void walk(const APath& path, Cutter& cutter) {
    const AFPoint* point = path.points().data();
    AFPoint start;
    AFPoint current;
    for (APath::EVerb verb : path.verbs()) {
        switch (verb) {
            case APath::EVerb::move:
                start = current = *point++;
                cutter.move(start);
                break;
            case APath::EVerb::line:
                cutter.line(current, *point);
                current = *point++;
                break;
            case APath::EVerb::curve:
                cutter.curve({current, point[0], point[1], point[2]}, kDepth);
                current = point[2];
                point += 3;
                break;
            case APath::EVerb::close:
                cutter.close(current, start);
                current = start;
                break;
        }
    }
}

// Moving what lies outside onto the edges changes nothing inside: no part of the outline is carried across
// any point there, so every point stays encircled as often as before.
class FillCutter {
public:
    explicit FillCutter(const AFRect& box) : m_box(box) {}

    void move(AFPoint to) { m_path.moveTo(within(to)); }

    void line(AFPoint from, AFPoint to) {
        std::array<double, 4> parts{};  // in rising order
        std::size_t count = 0;
        // Sorted by hand: within std::sort GCC 12 takes them for more than four, and warns.
        const auto cross = [&](double a, double b, double edge) {
            if ((a < edge) == (b < edge)) return;
            const double part = (edge - a) / (b - a);
            std::size_t at = count++;
            for (; at > 0 && parts[at - 1] > part; --at) parts[at] = parts[at - 1];
            parts[at] = part;
        };
        cross(from.x, to.x, m_box.left);
        cross(from.x, to.x, m_box.right);
        cross(from.y, to.y, m_box.top);
        cross(from.y, to.y, m_box.bottom);
        for (std::size_t i = 0; i < count; ++i) m_path.lineTo(within(between(from, to, parts[i])));
        m_path.lineTo(within(to));
    }

    void curve(const Curve& points, int depth) {
        const EPlace place = placeOf(points, m_box);
        if (place == EPlace::inside) return m_path.curveTo(points[1], points[2], points[3]);
        if (place == EPlace::outside || depth == 0) return line(points[0], points[3]);
        Curve first, second;
        halve(points, first, second);
        curve(first, depth - 1);
        curve(second, depth - 1);
    }

    void close(AFPoint from, AFPoint start) {
        line(from, start);
        m_path.close();
    }

    APath take() { return std::move(m_path); }

private:
    AFPoint within(AFPoint p) const {
        return {std::clamp(p.x, m_box.left, m_box.right), std::clamp(p.y, m_box.top, m_box.bottom)};
    }

    AFRect m_box;
    APath m_path;
};

void append(APath& path, const APath& more) {
    const AFPoint* point = more.points().data();
    for (APath::EVerb verb : more.verbs()) {
        // The first point is where `path` ends.
        if (verb == APath::EVerb::line) path.lineTo(*point);
        if (verb == APath::EVerb::curve) path.curveTo(point[0], point[1], point[2]);
        point += verb == APath::EVerb::curve ? 3 : verb == APath::EVerb::close ? 0 : 1;
    }
}

class StrokeCutter {
public:
    StrokeCutter(const AAffine& toPixels, const AFRect& box, bool dashed)
        : m_toPixels(toPixels), m_box(box), m_dashed(dashed) {}

    void move(AFPoint) { startFigure(); }

    void line(AFPoint from, AFPoint to) {
        double first = 0;
        double last = 1;
        const double length = distance(from, to);
        if (partWithin(m_toPixels.apply(from), m_toPixels.apply(to), m_box, first, last)) {
            if (first > 0) m_drawing = false;
            startRun(between(from, to, first), length * first);
            m_runs.back().path.lineTo(last < 1 ? between(from, to, last) : to);
            if (last < 1) m_drawing = false;
        } else {
            m_drawing = false;
        }
        m_length += length;
    }

    void curve(const Curve& points, int depth) {
        Curve pixels;
        std::transform(points.begin(), points.end(), pixels.begin(),
                       [this](AFPoint p) { return m_toPixels.apply(p); });
        const EPlace place = placeOf(pixels, m_box);
        if (place == EPlace::across) {
            if (depth == 0) return line(points[0], points[3]);
            Curve first, second;
            halve(points, first, second);
            curve(first, depth - 1);
            return curve(second, depth - 1);
        }
        if (place == EPlace::inside) {
            startRun(points[0], 0);
            m_runs.back().path.curveTo(points[1], points[2], points[3]);
        } else {
            m_drawing = false;
        }
        m_length += lengthOf(points);
    }

    void close(AFPoint from, AFPoint start) {
        const bool whole = m_drawing && m_runs.size() == m_figure + 1 && m_runs.back().start == 0;
        if (from.x != start.x || from.y != start.y || m_runs.size() == m_figure) line(from, start);
        if (m_runs.size() > m_figure && m_drawing) {
            ARun& first = m_runs[m_figure];
            if (whole && m_runs.size() == m_figure + 1) {
                first.path.close();
            } else if (!m_dashed && first.start == 0 && m_runs.size() > m_figure + 1) {
                append(m_runs.back().path, first.path);
                std::swap(first, m_runs.back());
                m_runs.pop_back();
            }
        }
        startFigure();
    }

    std::vector<ARun> take() { return std::move(m_runs); }

private:
    void startFigure() {
        m_figure = m_runs.size();
        m_length = 0;
        m_drawing = false;
    }

    void startRun(AFPoint at, double further) {
        if (m_drawing) return;
        m_runs.push_back({{}, m_length + further});
        m_runs.back().path.moveTo(at);
        m_drawing = true;
    }

    AAffine m_toPixels;
    AFRect m_box;
    bool m_dashed;
    std::vector<ARun> m_runs;
    std::size_t m_figure = 0;  // the first run of the present figure
    double m_length = 0;       // of the figure up to here
    bool m_drawing = false;    // the last run reaches to here
};

}  // namespace

APath transformed(const APath& path, const AAffine& transform) {
    APath result;
    const AFPoint* point = path.points().data();
    const auto next = [&] { return transform.apply(*point++); };
    for (APath::EVerb verb : path.verbs()) {
        switch (verb) {
            case APath::EVerb::move:
                result.moveTo(next());
                break;
            case APath::EVerb::line:
                result.lineTo(next());
                break;
            case APath::EVerb::curve: {
                const AFPoint a = next();
                const AFPoint b = next();
                result.curveTo(a, b, next());
                break;
            }
            case APath::EVerb::close:
                result.close();
                break;
        }
    }
    return result;
}

APath cutForFill(const APath& path, const AAffine& toPixels, const AFRect& box) {
    FillCutter cutter(box);
    walk(transformed(path, toPixels), cutter);
    return cutter.take();
}

std::vector<ARun> cutForStroke(const APath& path, const AAffine& toPixels, const AFRect& box, bool dashed) {
    StrokeCutter cutter(toPixels, box, dashed);
    walk(path, cutter);
    return cutter.take();
}

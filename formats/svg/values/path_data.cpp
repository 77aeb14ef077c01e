#include "formats/svg/values/path_data.h"

#include <algorithm>
#include <numbers>

#include "formats/svg/values/text_scan.h"
#include "formats/svg/values/units.h"

namespace svg {

namespace {

constexpr double kTurn = 2 * std::numbers::pi;

AFPoint mix(AFPoint a, AFPoint b, double t) {
    return {a.x + (b.x - a.x) * t, a.y + (b.y - a.y) * t};
}

double cubicAt(double p0, double p1, double p2, double p3, double t) {
    const double s = 1 - t;
    return s * s * s * p0 + 3 * s * s * t * p1 + 3 * s * t * t * p2 + t * t * t * p3;
}

// Where the derivative of one coordinate of a cubic is zero, within the curve: up to two parameters.
int cubicExtrema(double p0, double p1, double p2, double p3, double out[2]) {
    const double a = -p0 + 3 * p1 - 3 * p2 + p3;
    const double b = 2 * (p0 - 2 * p1 + p2);
    const double c = p1 - p0;
    double roots[2];
    int count = 0;
    const double discriminant = b * b - 4 * a * c;
    if (discriminant < 0) return 0;
    // The form that does not cancel: one root by the larger sum, the other by the product of both. It serves
    // a quadratic curve (a = 0) too.
    const double q = -0.5 * (b + std::copysign(std::sqrt(discriminant), b));
    if (a != 0) roots[count++] = q / a;
    if (q != 0) roots[count++] = c / q;
    int kept = 0;
    for (int i = 0; i < count; ++i) {
        if (roots[i] > 0 && roots[i] < 1) out[kept++] = roots[i];
    }
    return kept;
}

// Reads path data into a sink: moveTo(to), lineTo(from, to), cubicTo(from, c1, c2, to), arcTo(from, arc, to),
// close(from, start). A second close in a row, and a segment behind one, come without a move.
template <class Sink>
class PathReader {
public:
    explicit PathReader(Sink& sink) : m_sink(sink) {}

    void read(std::string_view data);

private:
    bool takeArguments(std::string_view& data, char command, double v[7]);
    void segment(char command, const double v[7], bool relative);
    void lineTo(AFPoint to) {
        m_sink.lineTo(m_current, to);
        m_current = to;
    }
    void cubicTo(AFPoint c1, AFPoint c2, AFPoint to) {
        m_sink.cubicTo(m_current, c1, c2, to);
        m_control = c2;
        m_current = to;
    }
    void arcTo(const double v[7], AFPoint to);

    Sink& m_sink;
    AFPoint m_current;
    AFPoint m_start;
    AFPoint m_control;  // of the segment before, for S and T
    char m_previous = 'M';
};

// The points center + u cos(angle) + w sin(angle) from `begin` over `delta`.
struct Arc {
    AFPoint center, u, w;
    double begin = 0;
    double delta = 0;
};

int argumentCount(char command) {
    switch (command) {
        case 'M':
        case 'L':
        case 'T':
            return 2;
        case 'H':
        case 'V':
            return 1;
        case 'S':
        case 'Q':
            return 4;
        case 'C':
            return 6;
        case 'A':
            return 7;
        default:
            return 0;
    }
}

// The flags of an arc are one digit each and may stand without a separator: "a1 1 0 0110 10".
bool takeFlag(std::string_view& data, double& value) {
    if (data.empty() || (data.front() != '0' && data.front() != '1')) return false;
    value = data.front() - '0';
    data.remove_prefix(1);
    return true;
}

template <class Sink>
bool PathReader<Sink>::takeArguments(std::string_view& data, char command, double v[7]) {
    const int count = argumentCount(command);
    for (int i = 0; i < count; ++i) {
        const bool flag = command == 'A' && (i == 3 || i == 4);
        if (!(flag ? takeFlag(data, v[i]) : takeNumber(data, v[i]))) return false;
        data = skipSeparator(data);
    }
    return true;
}

template <class Sink>
void PathReader<Sink>::read(std::string_view data) {
    data = trimFront(data);
    bool first = true;
    while (!data.empty()) {
        const char letter = data.front();
        const bool relative = letter >= 'a' && letter <= 'z';
        char command = relative ? static_cast<char>(letter - 'a' + 'A') : letter;
        if (first && command != 'M') return;
        first = false;
        data = trimFront(data.substr(1));
        if (command == 'Z') {
            m_sink.close(m_current, m_start);
            m_current = m_start;
            m_previous = 'Z';
            continue;
        }
        if (argumentCount(command) == 0) return;
        do {
            double v[7];
            if (!takeArguments(data, command, v)) return;
            segment(command, v, relative);
            m_previous = command;
            if (command == 'M') command = 'L';  // further pairs behind a "move to" are lines
        } while (!data.empty() && (isDigit(data.front()) || data.front() == '-' || data.front() == '+' ||
                                   data.front() == '.'));
    }
}

template <class Sink>
void PathReader<Sink>::segment(char command, const double v[7], bool relative) {
    const AFPoint base = relative ? m_current : AFPoint{};
    const auto point = [&](int i) { return AFPoint{base.x + v[i], base.y + v[i + 1]}; };
    const auto reflected = [&](char one, char other) {
        if (m_previous != one && m_previous != other) return m_current;
        return AFPoint{2 * m_current.x - m_control.x, 2 * m_current.y - m_control.y};
    };
    const auto quadratic = [&](AFPoint control, AFPoint to) {
        cubicTo(mix(m_current, control, 2.0 / 3), mix(to, control, 2.0 / 3), to);
        m_control = control;
    };
    switch (command) {
        case 'M':
            m_start = m_current = point(0);
            m_sink.moveTo(m_current);
            break;
        case 'L':
            lineTo(point(0));
            break;
        case 'H':
            lineTo({base.x + v[0], m_current.y});
            break;
        case 'V':
            lineTo({m_current.x, base.y + v[0]});
            break;
        case 'C':
            cubicTo(point(0), point(2), point(4));
            break;
        case 'S':
            cubicTo(reflected('C', 'S'), point(0), point(2));
            break;
        case 'Q':
            quadratic(point(0), point(2));
            break;
        case 'T':
            quadratic(reflected('Q', 'T'), point(0));
            break;
        case 'A':
            arcTo(v, point(5));
            break;
        default:
            break;
    }
}

// From end points to a centre.
template <class Sink>
void PathReader<Sink>::arcTo(const double v[7], AFPoint to) {
    double rx = std::fabs(v[0]);
    double ry = std::fabs(v[1]);
    const AFPoint from = m_current;
    if (rx == 0 || ry == 0 || (from.x == to.x && from.y == to.y)) {
        lineTo(to);
        return;
    }
    const double tilt = v[2] * std::numbers::pi / 180;
    const double cosine = std::cos(tilt);
    const double sine = std::sin(tilt);
    const AFPoint half{(from.x - to.x) / 2, (from.y - to.y) / 2};
    const AFPoint p{cosine * half.x + sine * half.y, -sine * half.x + cosine * half.y};
    const double ratio = (p.x / rx) * (p.x / rx) + (p.y / ry) * (p.y / ry);
    if (ratio > 1) {  // too small to reach: grown until they do
        rx *= std::sqrt(ratio);
        ry *= std::sqrt(ratio);
    }
    const bool sweep = v[4] != 0;
    const double factor = (v[3] != 0) == sweep ? -1 : 1;
    const double root = ratio > 1 ? 0 : factor * std::sqrt((1 - ratio) / ratio);
    const AFPoint c{root * rx * p.y / ry, -root * ry * p.x / rx};
    const AFPoint center{cosine * c.x - sine * c.y + (from.x + to.x) / 2,
                         sine * c.x + cosine * c.y + (from.y + to.y) / 2};
    const double begin = std::atan2((p.y - c.y) / ry, (p.x - c.x) / rx);
    double delta = std::atan2((-p.y - c.y) / ry, (-p.x - c.x) / rx) - begin;
    if (sweep && delta < 0) delta += kTurn;
    if (!sweep && delta > 0) delta -= kTurn;

    m_sink.arcTo(from, {center, {rx * cosine, rx * sine}, {-ry * sine, ry * cosine}, begin, delta}, to);
    m_current = to;
}

void addCubic(BoundsBuilder& bounds, AFPoint p0, AFPoint p1, AFPoint p2, AFPoint p3) {
    bounds.add(p0);
    bounds.add(p3);
    double t[4];
    int count = cubicExtrema(p0.x, p1.x, p2.x, p3.x, t);
    count += cubicExtrema(p0.y, p1.y, p2.y, p3.y, t + count);
    for (int i = 0; i < count; ++i) {
        bounds.add(AFPoint{cubicAt(p0.x, p1.x, p2.x, p3.x, t[i]), cubicAt(p0.y, p1.y, p2.y, p3.y, t[i])});
    }
}

class PathBounds {
public:
    PathBounds(const Affine& transform, BoundsBuilder& bounds) : m_transform(transform), m_bounds(bounds) {}

    void moveTo(AFPoint) {}
    void lineTo(AFPoint from, AFPoint to) {
        m_bounds.add(m_transform.apply(from));
        m_bounds.add(m_transform.apply(to));
    }
    void cubicTo(AFPoint from, AFPoint c1, AFPoint c2, AFPoint to) {
        addCubic(m_bounds, m_transform.apply(from), m_transform.apply(c1), m_transform.apply(c2),
                 m_transform.apply(to));
    }
    void arcTo(AFPoint from, const Arc& arc, AFPoint to);
    void close(AFPoint from, AFPoint start) { lineTo(from, start); }

private:
    const Affine& m_transform;
    BoundsBuilder& m_bounds;
};

// The extrema of C + U cos(angle) + W sin(angle) within the sweep.
void PathBounds::arcTo(AFPoint from, const Arc& arc, AFPoint to) {
    const AFPoint middle = m_transform.apply(arc.center);
    const AFPoint u = m_transform.applyLinear(arc.u);
    const AFPoint w = m_transform.applyLinear(arc.w);
    const auto addExtrema = [&](double angle) {
        for (int i = 0; i < 2; ++i, angle += std::numbers::pi) {
            double along = std::fmod(arc.delta > 0 ? angle - arc.begin : arc.begin - angle, kTurn);
            if (along < 0) along += kTurn;
            if (along < std::fabs(arc.delta)) {
                m_bounds.add(AFPoint{middle.x + u.x * std::cos(angle) + w.x * std::sin(angle),
                                     middle.y + u.y * std::cos(angle) + w.y * std::sin(angle)});
            }
        }
    };
    addExtrema(std::atan2(w.x, u.x));
    addExtrema(std::atan2(w.y, u.y));
    lineTo(from, to);
}

class PathOutline {
public:
    PathOutline(APath& path, Arcs arcs) : m_path(path), m_arcs(arcs) {}

    void moveTo(AFPoint to) {
        m_path.moveTo(to);
        m_closed = false;
    }
    void lineTo(AFPoint from, AFPoint to) {
        reopen(from);
        m_path.lineTo(to);
    }
    void cubicTo(AFPoint from, AFPoint c1, AFPoint c2, AFPoint to) {
        reopen(from);
        m_path.curveTo(c1, c2, to);
    }
    void arcTo(AFPoint from, const Arc& arc, AFPoint to);
    void close(AFPoint, AFPoint) {
        if (!m_closed) m_path.close();
        m_closed = true;
    }

private:
    // A segment behind a close starts a figure at the same point.
    void reopen(AFPoint from) {
        if (m_closed) m_path.moveTo(from);
        m_closed = false;
    }

    APath& m_path;
    Arcs m_arcs;
    bool m_closed = false;
};

// Curves of a quarter turn at most are off by less than a three thousandth of the radius.
void PathOutline::arcTo(AFPoint from, const Arc& arc, AFPoint to) {
    reopen(from);
    const int count =
        m_arcs == Arcs::oneCurve
            ? 1
            : std::max(1, static_cast<int>(std::ceil(std::fabs(arc.delta) / (kTurn / 4) - 1e-9)));
    const double step = arc.delta / count;
    // One curve for more than a quarter is no arc any more, but it leaves and arrives in the right direction.
    const double reach = 4.0 / 3 * std::tan(std::clamp(step, -kTurn / 4, kTurn / 4) / 4);
    const auto point = [&](double cosine, double sine) {
        return AFPoint{arc.center.x + arc.u.x * cosine + arc.w.x * sine,
                       arc.center.y + arc.u.y * cosine + arc.w.y * sine};
    };
    for (int i = 0; i < count; ++i) {
        const double a = arc.begin + step * i;
        const double b = a + step;
        const double ca = std::cos(a), sa = std::sin(a), cb = std::cos(b), sb = std::sin(b);
        m_path.curveTo(point(ca - reach * sa, sa + reach * ca), point(cb + reach * sb, sb - reach * cb),
                       i + 1 == count ? to : point(cb, sb));
    }
}

// Takes the next pair of coordinates; false at the end.
bool takePoint(std::string_view& points, AFPoint& p) {
    points = trimFront(points);
    if (!takeNumber(points, p.x)) return false;
    points = skipSeparator(points);
    if (!takeNumber(points, p.y)) return false;
    points = skipSeparator(points);
    return true;
}

}  // namespace

void addPathBounds(std::string_view data, const Affine& transform, BoundsBuilder& bounds) {
    PathBounds sink(transform, bounds);
    PathReader(sink).read(data);
}

void appendPath(std::string_view data, APath& path, Arcs arcs) {
    PathOutline sink(path, arcs);
    PathReader(sink).read(data);
}

void addPointsBounds(std::string_view points, const Affine& transform, BoundsBuilder& bounds) {
    for (AFPoint p; takePoint(points, p);) bounds.add(transform.apply(p));
}

void appendPoints(std::string_view points, bool closed, APath& path) {
    const std::size_t before = path.verbs().size();
    for (AFPoint p; takePoint(points, p);) {
        if (path.verbs().size() == before) {
            path.moveTo(p);
        } else {
            path.lineTo(p);
        }
    }
    if (closed && path.verbs().size() != before) path.close();
}

double outlineLength(const APath& path) {
    constexpr int kParts = 32;
    double length = 0;
    path.forEachSegment([&](const APath::Segment& one) {
        if (one.verb == APath::EVerb::move) return;
        if (one.verb != APath::EVerb::curve) {
            length += std::hypot(one.to.x - one.from.x, one.to.y - one.from.y);
            return;
        }
        AFPoint last = one.from;
        for (int i = 1; i <= kParts; ++i) {
            const double t = static_cast<double>(i) / kParts;
            const AFPoint next{cubicAt(one.from.x, one.control1.x, one.control2.x, one.to.x, t),
                               cubicAt(one.from.y, one.control1.y, one.control2.y, one.to.y, t)};
            length += std::hypot(next.x - last.x, next.y - last.y);
            last = next;
        }
    });
    return length;
}

AFRect outlineBounds(const APath& path) {
    BoundsBuilder bounds;
    path.forEachSegment([&](const APath::Segment& one) {
        if (one.verb == APath::EVerb::curve) {
            addCubic(bounds, one.from, one.control1, one.control2, one.to);
        } else if (one.verb == APath::EVerb::line) {
            bounds.add(one.from);
            bounds.add(one.to);
        }
    });
    return bounds.get();
}

}  // namespace svg

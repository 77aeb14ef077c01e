#include "formats/svg/path_data.h"

#include <algorithm>
#include <numbers>

#include "formats/svg/text_scan.h"
#include "formats/svg/units.h"

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

class PathBounds {
public:
    PathBounds(const Affine& transform, BoundsBuilder& bounds) : m_transform(transform), m_bounds(bounds) {}

    void read(std::string_view data);

private:
    bool takeArguments(std::string_view& data, char command, double v[7]);
    void segment(char command, const double v[7], bool relative);
    void lineTo(AFPoint to);
    void cubicTo(AFPoint c1, AFPoint c2, AFPoint to);
    void arcTo(const double v[7], AFPoint to);
    void close();

    const Affine& m_transform;
    BoundsBuilder& m_bounds;
    AFPoint m_current;
    AFPoint m_start;
    AFPoint m_control;  // of the segment before, for S and T
    char m_previous = 'M';
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

bool PathBounds::takeArguments(std::string_view& data, char command, double v[7]) {
    const int count = argumentCount(command);
    for (int i = 0; i < count; ++i) {
        const bool flag = command == 'A' && (i == 3 || i == 4);
        if (!(flag ? takeFlag(data, v[i]) : takeNumber(data, v[i]))) return false;
        data = skipSeparator(data);
    }
    return true;
}

void PathBounds::read(std::string_view data) {
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
            close();
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

void PathBounds::segment(char command, const double v[7], bool relative) {
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

void PathBounds::lineTo(AFPoint to) {
    m_bounds.add(m_transform.apply(m_current));
    m_bounds.add(m_transform.apply(to));
    m_current = to;
}

void PathBounds::cubicTo(AFPoint c1, AFPoint c2, AFPoint to) {
    const AFPoint p0 = m_transform.apply(m_current);
    const AFPoint p1 = m_transform.apply(c1);
    const AFPoint p2 = m_transform.apply(c2);
    const AFPoint p3 = m_transform.apply(to);
    m_bounds.add(p0);
    m_bounds.add(p3);
    double t[4];
    int count = cubicExtrema(p0.x, p1.x, p2.x, p3.x, t);
    count += cubicExtrema(p0.y, p1.y, p2.y, p3.y, t + count);
    for (int i = 0; i < count; ++i) {
        m_bounds.add(AFPoint{cubicAt(p0.x, p1.x, p2.x, p3.x, t[i]), cubicAt(p0.y, p1.y, p2.y, p3.y, t[i])});
    }
    m_control = c2;
    m_current = to;
}

// From end points to a centre, then the extrema of C + U cos(angle) + V sin(angle) within the sweep.
void PathBounds::arcTo(const double v[7], AFPoint to) {
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

    const AFPoint middle = m_transform.apply(center);
    const AFPoint u = m_transform.applyLinear({rx * cosine, rx * sine});
    const AFPoint w = m_transform.applyLinear({-ry * sine, ry * cosine});
    const auto addExtrema = [&](double angle) {
        for (int i = 0; i < 2; ++i, angle += std::numbers::pi) {
            double along = std::fmod(sweep ? angle - begin : begin - angle, kTurn);
            if (along < 0) along += kTurn;
            if (along < std::fabs(delta)) {
                m_bounds.add(AFPoint{middle.x + u.x * std::cos(angle) + w.x * std::sin(angle),
                                     middle.y + u.y * std::cos(angle) + w.y * std::sin(angle)});
            }
        }
    };
    addExtrema(std::atan2(w.x, u.x));
    addExtrema(std::atan2(w.y, u.y));
    lineTo(to);  // both ends
}

void PathBounds::close() {
    m_bounds.add(m_transform.apply(m_current));
    m_bounds.add(m_transform.apply(m_start));
    m_current = m_start;
}

}  // namespace

void addPathBounds(std::string_view data, const Affine& transform, BoundsBuilder& bounds) {
    PathBounds(transform, bounds).read(data);
}

void addPointsBounds(std::string_view points, const Affine& transform, BoundsBuilder& bounds) {
    points = trimFront(points);
    for (;;) {
        AFPoint p;
        if (!takeNumber(points, p.x)) return;
        points = skipSeparator(points);
        if (!takeNumber(points, p.y)) return;
        points = skipSeparator(points);
        bounds.add(transform.apply(p));
    }
}

}  // namespace svg

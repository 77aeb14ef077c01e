#include "canvas/cairo/pen.h"

#include <algorithm>
#include <array>
#include <cmath>

#include "canvas/cairo/limits.h"

namespace {

// Half a pixel: what is drawn as a line there is off by a hundredth of a pixel.
constexpr double kThin = 0.5;

// An impossible list is a line without gaps.
void setDashes(APen& pen, const AStrokeStyle& style, const AAffine& toPixels, double scale) {
    double period = 0;
    for (double dash : style.dashes) {
        if (!(dash >= 0)) return;
        period += dash * pen.unit;
    }
    // A transform that is nearly flat makes a whole period smaller than cairo's smallest step.
    const double smallest = std::fabs(toPixels.determinant()) / scale;
    if (!(period / pen.unit * smallest > 1 / 256.0) || !std::isfinite(period)) return;
    for (double dash : style.dashes) pen.dashes.push_back(dash * pen.unit);
    pen.dashesPerLength = static_cast<double>(style.dashes.size()) * pen.unit / period;
    // An odd list comes to the same only after it has been through twice.
    pen.dashOffset = std::fmod(style.dashOffset * pen.unit, period * 2);
    if (!std::isfinite(pen.dashOffset)) pen.dashOffset = 0;
}

// Where figures have no length, in the path's coordinates.
std::vector<AFPoint> dotsOf(const APath& path) {
    std::vector<AFPoint> dots;
    const AFPoint* point = path.points().data();
    AFPoint start;
    bool dot = false;  // segments, and none of any length
    bool length = false;
    const auto end = [&] {
        if (dot && !length) dots.push_back(start);
        dot = length = false;
    };
    for (APath::EVerb verb : path.verbs()) {
        const int count = verb == APath::EVerb::curve ? 3 : verb == APath::EVerb::close ? 0 : 1;
        if (verb == APath::EVerb::move) {
            end();
            start = *point;
        } else {
            dot = true;
            for (int i = 0; i < count; ++i) length = length || point[i].x != start.x || point[i].y != start.y;
        }
        point += count;
        if (verb == APath::EVerb::close) end();
    }
    end();
    return dots;
}

}  // namespace

std::optional<APen> penOf(const AStrokeStyle& style, const AAffine& toPixels) {
    if (!(style.width > 0) || !isUsable(toPixels)) return std::nullopt;
    if (!std::isfinite(style.miterLimit) || !std::isfinite(style.dashOffset)) return std::nullopt;
    const double scale = largestScale(toPixels);
    const double half = style.width * scale / 2;
    if (!(half > 0) || !(half < kWidestPen)) return std::nullopt;
    APen pen;
    pen.cap = style.cap;
    pen.join = style.join;
    pen.miterLimit = std::clamp(style.miterLimit, 1.0, kWidestPen / half);
    pen.reach = half * 1.5 + 1;
    if (style.join == ELineJoin::miter) pen.reach = std::max(pen.reach, half * pen.miterLimit + 1);
    pen.turned = toPixels.b != 0 || toPixels.c != 0 || std::fabs(toPixels.a) != std::fabs(toPixels.d);
    pen.unit = pen.turned ? 1 : scale;
    pen.width = style.width * pen.unit;
    pen.isThin = half <= kThin;
    setDashes(pen, style, toPixels, scale);
    return pen;
}

// They are counted before the transform: one that is nearly flat packs any number of them into a pixel.
double dashCount(const APen& pen, const APath& path) {
    if (pen.dashes.empty()) return 0;
    const std::vector<AFPoint>& points = path.points();
    double length = 0;
    for (std::size_t i = 1; i < points.size(); ++i)
        length += std::hypot(points[i].x - points[i - 1].x, points[i].y - points[i - 1].y);
    return length * pen.dashesPerLength;
}

void setPen(cairo_t* cairo, const APen& pen) {
    static constexpr std::array<cairo_line_cap_t, 3> kCaps{CAIRO_LINE_CAP_BUTT, CAIRO_LINE_CAP_ROUND,
                                                           CAIRO_LINE_CAP_SQUARE};
    static constexpr std::array<cairo_line_join_t, 3> kJoins{CAIRO_LINE_JOIN_MITER, CAIRO_LINE_JOIN_ROUND,
                                                             CAIRO_LINE_JOIN_BEVEL};
    cairo_set_line_width(cairo, pen.width);
    cairo_set_line_cap(cairo, kCaps[static_cast<std::size_t>(pen.cap)]);
    cairo_set_line_join(cairo, kJoins[static_cast<std::size_t>(pen.join)]);
    cairo_set_miter_limit(cairo, pen.miterLimit);
}

void strokeTraced(cairo_t* cairo, const APen& pen, const AAffine& toPixels, double dashOffset) {
    if (!pen.dashes.empty())
        cairo_set_dash(cairo, pen.dashes.data(), static_cast<int>(pen.dashes.size()), dashOffset);
    if (pen.turned) {
        const cairo_matrix_t matrix = {toPixels.a, toPixels.b, toPixels.c, toPixels.d, 0, 0};
        cairo_set_matrix(cairo, &matrix);
    }
    cairo_stroke(cairo);
    if (pen.turned) cairo_identity_matrix(cairo);
    if (!pen.dashes.empty()) cairo_set_dash(cairo, nullptr, 0, 0);
}

// Each is drawn as a dash of no length on a short line.
void strokeSquareDots(cairo_t* cairo, const APath& path, const APen& pen, const AAffine& toPixels) {
    const std::vector<AFPoint> dots = dotsOf(path);
    if (dots.empty()) return;
    AFPoint along = toPixels.applyLinear({1, 0});
    const double length = std::hypot(along.x, along.y);
    along = {along.x / length, along.y / length};
    for (const AFPoint& dot : dots) {
        const AFPoint at = toPixels.apply(dot);
        if (std::fabs(at.x) > kFar || std::fabs(at.y) > kFar) continue;
        cairo_move_to(cairo, at.x, at.y);
        cairo_line_to(cairo, at.x + along.x, at.y + along.y);
    }
    APen square = pen;
    square.dashes = {0, 2 + 2 / length};  // longer than the line, in either measure
    strokeTraced(cairo, square, toPixels, 0);
}

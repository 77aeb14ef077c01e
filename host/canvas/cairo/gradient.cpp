#include "canvas/cairo/gradient.h"

#include <algorithm>
#include <array>
#include <cmath>

#include "canvas/cairo/limits.h"

namespace {

// cairo calculates gradients with 16 binary places, too few for a gradient on the unit square that covers a
// page. So they are handed over in pixels, or as near to it as a circle can be.
ACairoPattern linearPattern(const AGradient& gradient) {
    const AAffine& t = gradient.toPixels;
    const AFPoint along{gradient.to.x - gradient.from.x, gradient.to.y - gradient.from.y};
    const AFPoint from = t.apply(gradient.from);
    const AFPoint to = t.applyLinear(along);
    // Lines of one colour stay at right angles to the line from the first stop to the last.
    AFPoint same = t.applyLinear({-along.y, along.x});
    const double length = std::hypot(same.x, same.y);
    if (!(length > 0) || !std::isfinite(length)) return nullptr;
    same = {same.x / length, same.y / length};
    const double slip = to.x * same.x + to.y * same.y;
    const AFPoint end{from.x + to.x - same.x * slip, from.y + to.y - same.y * slip};
    return ACairoPattern(cairo_pattern_create_linear(from.x, from.y, end.x, end.y));
}

ACairoPattern radialPattern(const AGradient& gradient) {
    const double scale = gradient.toPixels.scale();
    const AFPoint& from = gradient.from;
    const AFPoint& to = gradient.to;
    ACairoPattern pattern(cairo_pattern_create_radial((from.x - to.x) * scale, (from.y - to.y) * scale,
                                                      gradient.fromRadius * scale, 0, 0,
                                                      gradient.radius * scale));
    const AAffine toPixels =
        gradient.toPixels * AAffine::translation(to.x, to.y) * AAffine::scaling(1 / scale);
    const std::optional<AAffine> inverse = toPixels.inverse();
    if (!inverse || !inverse->isFinite()) return nullptr;
    const cairo_matrix_t matrix = matrixOf(*inverse);
    cairo_pattern_set_matrix(pattern.get(), &matrix);
    return pattern;
}

void addStops(cairo_pattern_t* pattern, const AGradient& gradient, double opacity) {
    double offset = 0;
    for (const AGradientStop& stop : gradient.stops) {
        offset = std::clamp(stop.offset, offset, 1.0);
        const COLORREF value = stop.color.getColorRef();
        cairo_pattern_add_color_stop_rgba(pattern, offset, GetRValue(value) / 255.0, GetGValue(value) / 255.0,
                                          GetBValue(value) / 255.0,
                                          clampedOpacity(stop.color.getOpacity()) * opacity);
    }
}

}  // namespace

bool isFinite(const AGradient& gradient) {
    const std::array<double, 6> numbers{gradient.from.x, gradient.from.y,     gradient.to.x,
                                        gradient.to.y,   gradient.fromRadius, gradient.radius};
    return std::all_of(numbers.begin(), numbers.end(),
                       [](double number) { return std::fabs(number) < kLargest; }) &&
           gradient.fromRadius >= 0 && gradient.radius >= 0 && isUsable(gradient.toPixels);
}

ACairoPattern gradientPattern(const AGradient& gradient, double opacity) {
    ACairoPattern pattern = gradient.radial ? radialPattern(gradient) : linearPattern(gradient);
    if (!pattern) return nullptr;
    addStops(pattern.get(), gradient, opacity);
    static constexpr std::array<cairo_extend_t, 3> kExtends{CAIRO_EXTEND_PAD, CAIRO_EXTEND_REFLECT,
                                                            CAIRO_EXTEND_REPEAT};
    cairo_pattern_set_extend(pattern.get(), kExtends[static_cast<std::size_t>(gradient.spread)]);
    if (cairo_pattern_status(pattern.get()) != CAIRO_STATUS_SUCCESS) return nullptr;
    return pattern;
}

#include "formats/svg/values/transform.h"

#include <numbers>

#include "formats/svg/values/text_scan.h"
#include "formats/svg/values/units.h"

namespace svg {

namespace {

constexpr int kMostArguments = 6;

double radians(double degrees) {
    return degrees * std::numbers::pi / 180;
}

Affine rotation(double degrees) {
    // Quarter turns are exact, so that a box turned by 90 degrees keeps whole coordinates.
    const double turn = std::remainder(degrees, 360);
    if (turn == 90) return {0, 1, -1, 0, 0, 0};
    if (turn == -90) return {0, -1, 1, 0, 0, 0};
    if (std::fabs(turn) == 180) return {-1, 0, 0, -1, 0, 0};
    const double sine = std::sin(radians(turn));
    const double cosine = std::cos(radians(turn));
    return {cosine, sine, -sine, cosine, 0, 0};
}

// One function of the list with its arguments; false when the name or the count of arguments is unknown.
bool makeTransform(std::string_view name, const double* v, int count, Affine& out) {
    if (name == "translate" && (count == 1 || count == 2)) {
        out = translation(v[0], count == 2 ? v[1] : 0);
    } else if (name == "scale" && (count == 1 || count == 2)) {
        out = {v[0], 0, 0, count == 2 ? v[1] : v[0], 0, 0};
    } else if (name == "rotate" && count == 1) {
        out = rotation(v[0]);
    } else if (name == "rotate" && count == 3) {
        out = translation(v[1], v[2]) * rotation(v[0]) * translation(-v[1], -v[2]);
    } else if (name == "skewX" && count == 1) {
        out = {1, 0, std::tan(radians(v[0])), 1, 0, 0};
    } else if (name == "skewY" && count == 1) {
        out = {1, std::tan(radians(v[0])), 0, 1, 0, 0};
    } else if (name == "matrix" && count == 6) {
        out = {v[0], v[1], v[2], v[3], v[4], v[5]};
    } else {
        return false;
    }
    return true;
}

}  // namespace

Affine parseTransform(std::string_view text) {
    Affine result;
    text = trim(text);
    if (text == "none") return {};
    while (!text.empty()) {
        const std::size_t open = text.find('(');
        if (open == text.npos) return {};
        const std::string_view name = trim(text.substr(0, open));
        text = trimFront(text.substr(open + 1));
        double values[kMostArguments];
        int count = 0;
        while (count < kMostArguments && takeNumber(text, values[count])) {
            ++count;
            text = skipSeparator(text);
        }
        Affine next;
        if (text.empty() || text.front() != ')' || !makeTransform(name, values, count, next)) return {};
        result = result * next;
        text = skipSeparator(text.substr(1));
    }
    return result;
}

AFRect BoundsBuilder::get() const {
    if (m_empty) return {};
    return {finite(m_rect.left), finite(m_rect.top), finite(m_rect.right), finite(m_rect.bottom)};
}

AFRect roundBounds(const Affine& t, AFPoint center, AFPoint core, double rx, double ry) {
    const AFPoint middle = t.apply(center);
    double x = std::fabs(t.a * core.x) + std::fabs(t.c * core.y);
    double y = std::fabs(t.b * core.x) + std::fabs(t.d * core.y);
    if (t.b == 0 && t.c == 0) {  // nearly always, and no square root
        x += std::fabs(t.a * rx);
        y += std::fabs(t.d * ry);
    } else {
        x += std::hypot(t.a * rx, t.c * ry);
        y += std::hypot(t.b * rx, t.d * ry);
    }
    return {finite(middle.x - x), finite(middle.y - y), finite(middle.x + x), finite(middle.y + y)};
}

AFRect rectBounds(const Affine& t, const AFRect& rect) {
    BoundsBuilder bounds;
    bounds.add(t.apply({rect.left, rect.top}));
    bounds.add(t.apply({rect.right, rect.top}));
    bounds.add(t.apply({rect.left, rect.bottom}));
    bounds.add(t.apply({rect.right, rect.bottom}));
    return bounds.get();
}

}  // namespace svg

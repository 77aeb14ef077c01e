// AAffine: a transform of the plane.
//
//     AAffine toPixels = AAffine::translation(10, 0) * AAffine::scaling(2);   // first doubled, then moved
//     AFPoint p = toPixels.apply({1, 1});                                     // 12, 2
#pragma once

#include <cmath>
#include <optional>

#include "kzutil/rect.h"

// x' = a x + c y + e, y' = b x + d y + f.
struct AAffine {
    double a = 1, b = 0, c = 0, d = 1, e = 0, f = 0;

    static AAffine translation(double x, double y) { return {1, 0, 0, 1, x, y}; }
    static AAffine scaling(double factor) { return {factor, 0, 0, factor, 0, 0}; }
    static AAffine scaling(double x, double y) { return {x, 0, 0, y, 0, 0}; }

    AFPoint apply(AFPoint p) const { return {a * p.x + c * p.y + e, b * p.x + d * p.y + f}; }
    // A direction: the translation does not count.
    AFPoint applyLinear(AFPoint p) const { return {a * p.x + c * p.y, b * p.x + d * p.y}; }

    double determinant() const { return a * d - b * c; }
    // How many times as long lengths become, on average over the directions.
    double scale() const { return std::sqrt(std::fabs(determinant())); }
    bool isFinite() const {
        return std::isfinite(a) && std::isfinite(b) && std::isfinite(c) && std::isfinite(d) &&
               std::isfinite(e) && std::isfinite(f);
    }
    // None where the plane is flattened to a line or a point, or a number is not finite.
    std::optional<AAffine> inverse() const {
        const double by = determinant();
        if (!isFinite() || by == 0 || !std::isfinite(1 / by)) return std::nullopt;
        return AAffine{d / by, -b / by, -c / by, a / by, (c * f - d * e) / by, (b * e - a * f) / by};
    }
    friend bool operator==(const AAffine&, const AAffine&) = default;
};

// First `inner`, then `outer`.
inline AAffine operator*(const AAffine& outer, const AAffine& inner) {
    const AAffine& o = outer;
    const AAffine& i = inner;
    return {o.a * i.a + o.c * i.b, o.b * i.a + o.d * i.b,       o.a * i.c + o.c * i.d,
            o.b * i.c + o.d * i.d, o.a * i.e + o.c * i.f + o.e, o.b * i.e + o.d * i.f + o.f};
}

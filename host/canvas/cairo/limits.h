// What transforms and pens cairo can calculate: numbers beyond draw nothing.
#pragma once

#include <algorithm>
#include <cmath>
#include <optional>

#include "kzutil/affine.h"

// What doubles can still be calculated with, with room for products.
constexpr double kLargest = 1e100;
// Half the pen's width, in pixels.
constexpr double kWidestPen = 1 << 21;

// What is no number counts as 0.
inline double clampedOpacity(double opacity) {
    return opacity > 0 ? std::min(opacity, 1.0) : 0;
}

// How much longer the longest direction becomes.
inline double largestScale(const AAffine& t) {
    const double squares = t.a * t.a + t.b * t.b + t.c * t.c + t.d * t.d;
    const double determinant = t.determinant();
    return std::sqrt((squares + std::sqrt(std::max(0.0, squares * squares - 4 * determinant * determinant))) /
                     2);
}

inline bool isUsable(const AAffine& transform) {
    const double largest = std::max({std::fabs(transform.a), std::fabs(transform.b), std::fabs(transform.c),
                                     std::fabs(transform.d), std::fabs(transform.e), std::fabs(transform.f)});
    const std::optional<AAffine> inverse = transform.inverse();
    return largest < kLargest && inverse && inverse->isFinite();
}

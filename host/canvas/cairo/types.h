// cairo's objects, given back at the end of their owner, and its words for ours.
#pragma once

#include <cairo.h>

#include <memory>

#include "canvas/canvas.h"
#include "kzutil/affine.h"

struct ACairoRelease {
    void operator()(cairo_t* cairo) const { cairo_destroy(cairo); }
    void operator()(cairo_surface_t* surface) const { cairo_surface_destroy(surface); }
    void operator()(cairo_pattern_t* pattern) const { cairo_pattern_destroy(pattern); }
};
using ACairo = std::unique_ptr<cairo_t, ACairoRelease>;
using ACairoSurface = std::unique_ptr<cairo_surface_t, ACairoRelease>;
using ACairoPattern = std::unique_ptr<cairo_pattern_t, ACairoRelease>;

// cairo counts pixels up to 2^23, and gets slow long before: what reaches farther than this is cut first.
constexpr double kFar = 1 << 15;

inline cairo_matrix_t matrixOf(const AAffine& transform) {
    return {transform.a, transform.b, transform.c, transform.d, transform.e, transform.f};
}

inline cairo_fill_rule_t ruleOf(EFillRule rule) {
    return rule == EFillRule::evenOdd ? CAIRO_FILL_RULE_EVEN_ODD : CAIRO_FILL_RULE_WINDING;
}

// Appends the figures; `points` are the path's, in pixels. Where `flattens`, curves that are flat enough to be drawn
// as one line become lines, which cost less.
void trace(cairo_t* cairo, const APath& path, const AFPoint* points, bool flattens = false);

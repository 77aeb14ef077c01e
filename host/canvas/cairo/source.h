// ASource: what a canvas draws with, as cairo takes it: a colour, a gradient or an image.
//
//     if (const ASource source = sourceOf(paint, seen)) cairo_set_source(cairo, source.pattern.get());
#pragma once

#include "canvas/cairo/types.h"

struct ASource {
    // Nothing where the paint shows nothing, or is beyond what can be calculated.
    ACairoPattern pattern;
    // Behind the pattern, when an image shows through.
    AImage dimmed;
    // The pattern reads pixels that are not its own: cairo has to let go of it once the drawing is done.
    bool borrows = false;

    explicit operator bool() const { return pattern != nullptr; }
};

// `seen`: the pixels that drawing can reach, near which a tile has to start.
ASource sourceOf(const APaint& paint, const RECT& seen);
// Edge pixels are clamped; the caller clips to the image.
ASource sourceOf(const AImage& image, const AAffine& toPixels, double opacity, bool smooth);

// APen: a stroke style as cairo takes it.
#pragma once

#include <optional>

#include "canvas/cairo/types.h"

struct APen {
    ELineCap cap = ELineCap::butt;
    ELineJoin join = ELineJoin::miter;
    double width = 0;
    double miterLimit = 0;
    double reach = 0;  // how far it reaches beyond the outline, in pixels
    double unit = 1;   // how much longer lengths of the path are where the pen is
    std::vector<double> dashes;
    double dashOffset = 0;
    double dashesPerLength = 0;  // of the path before its transform
    bool turned = false;         // its shape needs the matrix; else everything is in pixels
    bool isThin = false;         // nobody sees how it turns in a curve that is nearly flat
};

// None when it draws nothing, or nothing that can be calculated.
std::optional<APen> penOf(const AStrokeStyle& style, const AAffine& toPixels);

// About how many dashes the figures need.
double dashCount(const APen& pen, const APath& path);

// Everything but the dashes and the matrix.
void setPen(cairo_t* cairo, const APen& pen);

// Strokes cairo's current path, which is in pixels.
void strokeTraced(cairo_t* cairo, const APen& pen, const AAffine& toPixels, double dashOffset);

// cairo leaves out dots with square caps, since nothing tells their direction: here they are level.
void strokeSquareDots(cairo_t* cairo, const APath& path, const APen& pen, const AAffine& toPixels);

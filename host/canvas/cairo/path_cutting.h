// Cutting outlines that reach farther than cairo can count (2^23 pixels), or that would
// need more dashes than anybody sees. Inside the box what is drawn stays the same.
#pragma once

#include <vector>

#include "canvas/path.h"
#include "kzutil/affine.h"

// Where the corners of the outline come to lie.
APath transformed(const APath& path, const AAffine& transform);

// In pixels, for filling: what lies outside the box is moved onto its edges.
APath cutForFill(const APath& path, const AAffine& toPixels, const AFRect& box);

// A part of a figure that may show inside the box.
struct ARun {
    APath path;        // in the coordinates of the whole path
    double start = 0;  // how far along the figure it starts, for dashes
};

// For stroking; the box has to have room for the pen. `dashed`: a closed figure that is cut stays open at its
// start, where its dashes start.
std::vector<ARun> cutForStroke(const APath& path, const AAffine& toPixels, const AFRect& box, bool dashed);

// The drawing library behind devices: cairo (device_cairo.cpp) or GDI+ (device_gdiplus.cpp), picked by the
// build.
//
// Edges are antialiased (Wine's GDI+ does without); edges that lie on pixel edges are exact everywhere.
#pragma once

#include "kzcore/color.h"
#include "kzcore/path.h"

enum class EFillRule { nonZero, evenOdd };

// Rows of 0x00RRGGBB without gaps, top row first.
struct APixels {
    void* bits = nullptr;
    int width = 0;
    int height = 0;
};

// Paths and widths are in pixels. Strokes have miter joins (limit 4) and flat ends.
void fillPixels(const APixels& pixels, const APath& path, const AColor& color, EFillRule rule);
void strokePixels(const APixels& pixels, const APath& path, const AColor& color, double width);

// ACanvas: draws outlines and images on pixels. The drawing library behind devices is cairo, on every build
// (canvas/cairo).
//
//     AImage image(100, 100);
//     {
//         ACanvas canvas(pixelsOf(image));
//         canvas.pushClip(circle, AAffine(), EFillRule::nonZero);
//         canvas.fill(star, AAffine::scaling(2), APaint{AColor(RGB(255, 0, 0), 0.5)}, EFillRule::evenOdd);
//         canvas.popClip();
//     }   // the pixels are complete here, or after flush()
//
// Coordinates are pixels, the first pixel reaching from 0 to 1; every call brings its own transform to them.
// Edges are antialiased, and exact where they lie on pixel edges. What is not finite draws nothing. Groups
// with an opacity, masks and filters are made of canvases on images of their own.
#pragma once

#include <memory>
#include <vector>

#include "canvas/color.h"
#include "canvas/image.h"
#include "canvas/path.h"
#include "canvas/pixel_blending.h"
#include "kzutil/affine.h"

enum class EFillRule { nonZero, evenOdd };
enum class ELineCap { butt, round, square };
enum class ELineJoin { miter, round, bevel };
// What a gradient shows outside its stops.
enum class ESpread { pad, reflect, repeat };

// Rows without gaps, top row first.
struct APixels {
    void* bits = nullptr;
    int width = 0;
    int height = 0;
    bool hasAlpha = false;  // 0xAARRGGBB, multiplied, as in AImage; else 0x00RRGGBB
};
APixels pixelsOf(AImage& image);

struct AGradient {
    bool radial = false;
    // Linear: the first stop lies at `from`, the last at `to`. Radial: circles from (from, fromRadius) to
    // (to, radius); what no circle passes is not painted.
    AFPoint from, to;
    double fromRadius = 0;
    double radius = 0;
    ESpread spread = ESpread::pad;
    std::vector<AGradientStop> stops;  // in rising order; none paint nothing, one paints its colour
    AAffine toPixels;
};

// An image repeated in both directions.
struct ATile {
    AImage image;
    // From the image's pixels.
    AAffine toPixels;
};

// The gradient or the tile where there is one, else the colour. They stay the caller's.
struct APaint {
    AColor color;
    const AGradient* gradient = nullptr;
    const ATile* tile = nullptr;
    double opacity = 1;  // of a gradient or a tile
};

// Lengths are those of the path, before its transform: a transform changes the pen's shape, too.
struct AStrokeStyle {
    double width = 1;
    ELineCap cap = ELineCap::butt;
    ELineJoin join = ELineJoin::miter;
    double miterLimit = 4;  // times the width; beyond it a miter is a bevel
    // Dash, gap, dash, … as long as the list, again and again. Empty, with a negative length or of no length
    // at all: a line without gaps.
    std::vector<double> dashes;
    double dashOffset = 0;
};

class ACanvas {
public:
    // The pixels stay the caller's and outlive the canvas.
    explicit ACanvas(const APixels& pixels);
    ~ACanvas();
    ACanvas(const ACanvas&) = delete;
    ACanvas& operator=(const ACanvas&) = delete;

    void fill(const APath& path, const AAffine& toPixels, const APaint& paint, EFillRule rule);
    // A width that is not positive draws nothing. A dot (a figure of no length) shows with round and square
    // caps.
    void stroke(const APath& path, const AAffine& toPixels, const APaint& paint, const AStrokeStyle& style);
    // `smooth`: pixels are mixed where the image is enlarged or turned; else the nearest one shows.
    // `blend`: how its colours mix with what is there; where nothing is there, they stay as they are.
    void drawImage(const AImage& image, const AAffine& toPixels, double opacity, bool smooth,
                   EBlend blend = EBlend::normal);

    // Cuts what is drawn until the matching popClip; clips within clips cut further.
    void pushClip(const APath& path, const AAffine& toPixels, EFillRule rule);
    void popClip();
    // The whole pixels that drawing can still reach; an empty rectangle when there are none.
    RECT clipBounds() const;

    // What was drawn so far is in the pixels.
    void flush();

private:
    struct Library;
    std::unique_ptr<Library> m_library;
};

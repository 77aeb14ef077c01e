// What filters do to pixels. Images of one call are of one size; numbers are pixels.
//
//     AImage shadow = blurImage(moveImage(alphaOf(picture), 3, 3), 2, 2);
//
// What lies outside an image is transparent. Nothing here costs more than the image's size (times a small
// bound that the functions keep to), whatever the numbers are.
#pragma once

#include <array>
#include <cstdint>
#include <span>
#include <vector>

#include "canvas/image.h"
#include "canvas/pixel_blending.h"
#include "platform/winapi.h"

namespace svg {

// A colour that is not multiplied by its alpha: red, green, blue, alpha from 0 to 1.
using ColorValues = std::array<double, 4>;

void convertToLinear(AImage& image);
void convertToSrgb(AImage& image);
// One component from 0 to 1.
double linearOf(double srgb);

// Black, as opaque as the image.
AImage alphaOf(const AImage& image);
AImage moveImage(const AImage& image, int dx, int dy);
// The standard deviations in both directions; not positive: not blurred in that one.
AImage blurImage(const AImage& image, double across, double down);
void fillImage(AImage& image, const RECT& area, const ColorValues& color);
// Everything outside becomes transparent.
void cropImage(AImage& image, const RECT& area);
// The part of the image within `tile` repeated over the whole of it.
AImage tileImage(const AImage& image, const RECT& tile);

AImage blendImages(const AImage& top, const AImage& bottom, EBlend mode);

enum class CompositeMode : std::uint8_t { over, in, out, atop, exclusiveOr, lighter };
AImage compositeImages(const AImage& top, const AImage& bottom, CompositeMode mode);
// k[0] * top * bottom + k[1] * top + k[2] * bottom + k[3], of multiplied colours.
AImage mixImages(const AImage& top, const AImage& bottom, const std::array<double, 4>& k);

// Four rows of five: what red, green, blue and alpha, not multiplied, and 1 become.
using ColorMatrix = std::array<double, 20>;
AImage applyColorMatrix(const AImage& image, const ColorMatrix& matrix);
// For red, green, blue and alpha, not multiplied.
using TransferTables = std::array<std::array<std::uint8_t, 256>, 4>;
AImage applyTransfer(const AImage& image, const TransferTables& tables);

// Every component becomes the greatest (dilate) or the least within a rectangle around the pixel.
AImage thickenImage(const AImage& image, int radiusX, int radiusY, bool dilate);

// How a matrix or a displacement sees what lies outside the image.
enum class EdgeMode : std::uint8_t { none, duplicate, wrap };
struct Convolution {
    static constexpr int kMostWeights = 256;
    int columns = 3, rows = 3;
    std::vector<double> weights;  // row by row, turned by half a turn as convolving asks for
    double divisor = 1;
    double bias = 0;
    int targetX = 1, targetY = 1;
    EdgeMode edges = EdgeMode::duplicate;
    bool keepsAlpha = false;
    RECT area{};  // within which edges are
};
AImage convolveImage(const AImage& image, const Convolution& convolution);

// Each pixel is taken from where two components of the map point: (component - 1/2) * scale away.
// Components: 0 to 3 for red, green, blue, alpha.
AImage displaceImage(const AImage& image, const AImage& map, double scaleX, double scaleY, int componentX,
                     int componentY);

}  // namespace svg

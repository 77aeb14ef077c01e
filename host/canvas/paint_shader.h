// The colours of paints and images, pixel by pixel: for a drawing library that knows no such gradients or
// tiles and only tells how much of each pixel an outline covers.
//
//     if (std::unique_ptr<APaintShader> shader = shaderOf(paint)) {
//         shader->shade(left, y, colors);
//         for (std::size_t i = 0; i < colors.size(); ++i)
//             row[i] = over(scaledPixel(colors[i], coverage[i]), row[i]);
//     }
//
// A pixel's colour is the one at its middle.
#pragma once

#include <memory>
#include <optional>
#include <span>

#include "canvas/canvas.h"

class APaintShader {
public:
    virtual ~APaintShader() = default;
    // The colours of the pixels from (x, y) on to the right, as in AImage.
    virtual void shade(int x, int y, std::span<std::uint32_t> colors) const = 0;
};

// Null for what paints nothing: no opacity, no stops, numbers that are not finite or a flattened gradient or
// tile. A gradient whose ends are the same paints its last colour. The shader reads the paint's tile as long
// as it lives.
std::unique_ptr<APaintShader> shaderOf(const APaint& paint);
// The image, its edge pixels continued for ever, to be cut at its frame: so its edges do not fade when it is
// enlarged. An image made smaller smoothly shows the average of what falls into a pixel.
std::unique_ptr<APaintShader> shaderOf(const AImage& image, const AAffine& toPixels, double opacity,
                                       bool smooth);
// The image repeated in both directions, smoothly.
std::unique_ptr<APaintShader> shaderOf(const ATile& tile, double opacity);

// Where between its first stop (0) and its last (1) the gradient is at a point of its own coordinates, before
// the spread. None where no circle passes; where several do, the one drawn last.
std::optional<double> gradientOffset(const AGradient& gradient, AFPoint at);
// To 0 to 1. Repeating, 1 and 0 are the same place and count as 0.
double spreadOffset(double offset, ESpread spread);

// The image at another size, neither side larger than before: every pixel is the average of what it covers.
AImage shrunkImage(const AImage& image, int width, int height);

// Filters that look at the pixels around a pixel, but for the blur.
#include <algorithm>
#include <cmath>

#include "formats/svg/draw/filter/filter_pixels.h"
#include "formats/svg/draw/filter/pixel_values.h"

namespace svg {

namespace {

// The extremum of the bytes within a window, in the time of the line: blocks as long as the window are run
// through from both ends, and every window is the end of one block and the start of the next.
template <class Pick>
void extremaOfLine(const std::vector<std::uint8_t>& from, int radius, std::vector<std::uint8_t>& forward,
                   std::vector<std::uint8_t>& backward, Pick pick) {
    const std::size_t window = static_cast<std::size_t>(radius) * 2 + 1;
    const std::size_t count = from.size();
    for (std::size_t i = 0; i < count; ++i)
        forward[i] = i % window == 0 ? from[i] : pick(forward[i - 1], from[i]);
    for (std::size_t i = count; i-- > 0;)
        backward[i] = (i + 1) % window == 0 || i + 1 == count ? from[i] : pick(backward[i + 1], from[i]);
}

// One direction for all components; the rows are padded with what lies outside: transparent pixels.
template <class Pick>
void thickenLines(AImage& image, int radius, bool rows, Pick pick) {
    const int length = rows ? image.width() : image.height();
    const int lines = rows ? image.height() : image.width();
    const std::size_t padded = static_cast<std::size_t>(length) + static_cast<std::size_t>(radius) * 2;
    std::vector<std::uint8_t> line(padded), forward(padded), backward(padded);
    for (int at = 0; at < lines; ++at) {
        for (int shift = 0; shift < 32; shift += 8) {
            const auto pixel = [&](int i) -> std::uint32_t& {
                return rows ? image.at(i, at) : image.at(at, i);
            };
            for (int i = 0; i < length; ++i)
                line[static_cast<std::size_t>(i + radius)] = static_cast<std::uint8_t>(pixel(i) >> shift);
            extremaOfLine(line, radius, forward, backward, pick);
            for (int i = 0; i < length; ++i) {
                const std::size_t start = static_cast<std::size_t>(i);
                const std::uint32_t value =
                    pick(backward[start], forward[start + static_cast<std::size_t>(radius) * 2]);
                pixel(i) = (pixel(i) & ~(0xffu << shift)) | value << shift;
            }
        }
    }
}

int clampedIndex(int index, int low, int high, EdgeMode mode) {
    if (index >= low && index < high) return index;
    if (mode == EdgeMode::none) return -1;
    if (mode == EdgeMode::duplicate) return std::clamp(index, low, high - 1);
    const int size = high - low;
    return low + ((index - low) % size + size) % size;
}

}  // namespace

AImage thickenImage(const AImage& image, int radiusX, int radiusY, bool dilate) {
    AImage result = image;
    if (image.empty()) return result;
    radiusX = std::clamp(radiusX, 0, image.width());
    radiusY = std::clamp(radiusY, 0, image.height());
    const auto run = [&](auto pick) {
        if (radiusX > 0) thickenLines(result, radiusX, true, pick);
        if (radiusY > 0) thickenLines(result, radiusY, false, pick);
    };
    if (dilate) {
        run([](std::uint8_t a, std::uint8_t b) { return std::max(a, b); });
    } else {
        run([](std::uint8_t a, std::uint8_t b) { return std::min(a, b); });
    }
    return result;
}

AImage convolveImage(const AImage& image, const Convolution& c) {
    AImage result(image.width(), image.height());
    const RECT area{std::max<LONG>(c.area.left, 0), std::max<LONG>(c.area.top, 0),
                    std::min<LONG>(c.area.right, image.width()),
                    std::min<LONG>(c.area.bottom, image.height())};
    if (area.left >= area.right || area.top >= area.bottom) return result;
    for (int y = area.top; y < area.bottom; ++y) {
        for (int x = area.left; x < area.right; ++x) {
            std::array<double, 4> sums{};
            std::size_t weight = c.weights.size();
            for (int row = 0; row < c.rows; ++row) {
                const int fromY = clampedIndex(y + row - c.targetY, area.top, area.bottom, c.edges);
                for (int column = 0; column < c.columns; ++column) {
                    const double w = c.weights[--weight];
                    const int fromX = clampedIndex(x + column - c.targetX, area.left, area.right, c.edges);
                    if (fromX < 0 || fromY < 0 || w == 0) continue;
                    const std::uint32_t pixel = image.at(fromX, fromY);
                    const unsigned alpha = alphaOfPixel(pixel);
                    const auto value = [&](unsigned component) {
                        return c.keepsAlpha && alpha != 0 ? divided(component, alpha) : component;
                    };
                    sums[0] += w * value(redOf(pixel));
                    sums[1] += w * value(greenOf(pixel));
                    sums[2] += w * value(blueOf(pixel));
                    sums[3] += w * alpha;
                }
            }
            const unsigned own = alphaOfPixel(image.at(x, y));
            const double bias = c.keepsAlpha ? c.bias : c.bias * own / 255;
            const auto component = [&](double sum) { return componentOf(sum / c.divisor / 255 + bias); };
            if (c.keepsAlpha) {
                result.at(x, y) =
                    multipliedPixel(component(sums[0]), component(sums[1]), component(sums[2]), own);
                continue;
            }
            const unsigned alpha = component(sums[3]);
            result.at(x, y) =
                pixelOf(std::min(component(sums[0]), alpha), std::min(component(sums[1]), alpha),
                        std::min(component(sums[2]), alpha), alpha);
        }
    }
    return result;
}

AImage displaceImage(const AImage& image, const AImage& map, double scaleX, double scaleY, int componentX,
                     int componentY) {
    AImage result(image.width(), image.height());
    const auto valueOf = [](std::uint32_t pixel, int component) {
        const unsigned alpha = alphaOfPixel(pixel);
        if (component == 3) return alpha / 255.0;
        const unsigned value = pixel >> (16 - 8 * component) & 0xff;
        return alpha != 0 ? divided(value, alpha) / 255.0 : 0;
    };
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x) {
            const std::uint32_t pixel = map.at(x, y);
            // A map that says nothing moves nothing.
            const bool moves = alphaOfPixel(pixel) != 0;
            const double fromX = x + (moves ? scaleX * (valueOf(pixel, componentX) - 0.5) : 0) + 0.5;
            const double fromY = y + (moves ? scaleY * (valueOf(pixel, componentY) - 0.5) : 0) + 0.5;
            if (fromX >= 0 && fromX < image.width() && fromY >= 0 && fromY < image.height())
                result.at(x, y) = image.at(static_cast<int>(fromX), static_cast<int>(fromY));
        }
    }
    return result;
}

}  // namespace svg

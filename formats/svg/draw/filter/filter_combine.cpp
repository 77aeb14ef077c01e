#include <algorithm>
#include <cmath>

#include "formats/svg/draw/filter/filter_pixels.h"
#include "formats/svg/draw/filter/pixel_values.h"

namespace svg {

namespace {

// Combines two images pixel by pixel.
template <class Combine>
AImage combined(const AImage& top, const AImage& bottom, Combine combine) {
    AImage result = top;
    const std::size_t count = std::min(result.pixels().size(), bottom.pixels().size());
    for (std::size_t i = 0; i < count; ++i)
        result.pixels()[i] = combine(result.pixels()[i], bottom.pixels()[i]);
    return result;
}

// a * x + b * y for all components of two pixels, a and b from 0 to 255.
std::uint32_t weighted(std::uint32_t x, unsigned a, std::uint32_t y, unsigned b) {
    const auto component = [&](int shift) {
        const unsigned sum = multiplied(x >> shift & 0xff, a) + multiplied(y >> shift & 0xff, b);
        return std::min(sum, 255u) << shift;
    };
    return component(24) | component(16) | component(8) | component(0);
}

}  // namespace

AImage blendImages(const AImage& top, const AImage& bottom, EBlend mode) {
    return combined(top, bottom, [&](std::uint32_t x, std::uint32_t y) { return blendedPixel(mode, x, y); });
}

AImage compositeImages(const AImage& top, const AImage& bottom, CompositeMode mode) {
    const auto each = [&](auto factors) {
        return combined(top, bottom, [&](std::uint32_t x, std::uint32_t y) {
            const auto [a, b] = factors(alphaOfPixel(x), alphaOfPixel(y));
            return weighted(x, a, y, b);
        });
    };
    using Factors = std::pair<unsigned, unsigned>;
    switch (mode) {
        case CompositeMode::over:
            return each([](unsigned x, unsigned) { return Factors(255, 255 - x); });
        case CompositeMode::in:
            return each([](unsigned, unsigned y) { return Factors(y, 0); });
        case CompositeMode::out:
            return each([](unsigned, unsigned y) { return Factors(255 - y, 0); });
        case CompositeMode::atop:
            return each([](unsigned x, unsigned y) { return Factors(y, 255 - x); });
        case CompositeMode::exclusiveOr:
            return each([](unsigned x, unsigned y) { return Factors(255 - y, 255 - x); });
        case CompositeMode::lighter:
            return each([](unsigned, unsigned) { return Factors(255, 255); });
    }
    return top;
}

AImage mixImages(const AImage& top, const AImage& bottom, const std::array<double, 4>& k) {
    return combined(top, bottom, [&](std::uint32_t x, std::uint32_t y) {
        std::uint32_t result = 0;
        unsigned alpha = 255;
        for (int shift = 24; shift >= 0; shift -= 8) {
            const double a = (x >> shift & 0xff) / 255.0;
            const double b = (y >> shift & 0xff) / 255.0;
            // A multiplied component is never more than its alpha.
            const unsigned value = std::min(componentOf(k[0] * a * b + k[1] * a + k[2] * b + k[3]), alpha);
            if (shift == 24) alpha = value;
            result |= value << shift;
        }
        return result;
    });
}

AImage moveImage(const AImage& image, int dx, int dy) {
    AImage result(image.width(), image.height());
    if (std::abs(dx) >= image.width() || std::abs(dy) >= image.height()) return result;
    const int count = image.width() - std::abs(dx);
    for (int y = std::max(dy, 0); y < image.height() + std::min(dy, 0); ++y) {
        const std::uint32_t* from = image.row(y - dy) + std::max(-dx, 0);
        std::copy(from, from + count, result.row(y) + std::max(dx, 0));
    }
    return result;
}

namespace {

RECT withinImage(const AImage& image, const RECT& area) {
    return {std::clamp<LONG>(area.left, 0, image.width()), std::clamp<LONG>(area.top, 0, image.height()),
            std::clamp<LONG>(area.right, 0, image.width()), std::clamp<LONG>(area.bottom, 0, image.height())};
}

}  // namespace

void fillImage(AImage& image, const RECT& area, const ColorValues& color) {
    const std::uint32_t pixel = multipliedPixel(componentOf(color[0]), componentOf(color[1]),
                                                componentOf(color[2]), componentOf(color[3]));
    const RECT inside = withinImage(image, area);
    if (inside.left >= inside.right) return;
    for (int y = inside.top; y < inside.bottom; ++y)
        std::fill(image.row(y) + inside.left, image.row(y) + inside.right, pixel);
}

void cropImage(AImage& image, const RECT& area) {
    const RECT inside = withinImage(image, area);
    for (int y = 0; y < image.height(); ++y) {
        std::uint32_t* row = image.row(y);
        const bool keeps = y >= inside.top && y < inside.bottom && inside.left < inside.right;
        std::fill(row, row + (keeps ? static_cast<int>(inside.left) : image.width()), 0u);
        if (keeps) std::fill(row + inside.right, row + image.width(), 0u);
    }
}

AImage tileImage(const AImage& image, const RECT& tile) {
    AImage result(image.width(), image.height());
    const RECT inside = withinImage(image, tile);
    // The parts of the tile outside the image are lost, but it repeats with its whole size.
    const int width = static_cast<int>(tile.right - tile.left);
    const int height = static_cast<int>(tile.bottom - tile.top);
    if (width <= 0 || height <= 0) return result;
    const auto wrapped = [](int at, int start, int size) {
        return start + ((at - start) % size + size) % size;
    };
    for (int y = 0; y < image.height(); ++y) {
        const int fromY = wrapped(y, static_cast<int>(tile.top), height);
        if (fromY < inside.top || fromY >= inside.bottom) continue;
        for (int x = 0; x < image.width(); ++x) {
            const int fromX = wrapped(x, static_cast<int>(tile.left), width);
            if (fromX >= inside.left && fromX < inside.right) result.at(x, y) = image.at(fromX, fromY);
        }
    }
    return result;
}

}  // namespace svg

#include <algorithm>
#include <cmath>
#include <vector>

#include "canvas/paint_shader.h"
#include "canvas/pixel_mixing.h"

namespace {

enum class EBeyond { edge, again };

// A pixel's number along one direction, for what lies beyond the image as well.
int within(int at, int size, EBeyond beyond) {
    if (beyond == EBeyond::edge) return std::clamp(at, 0, size - 1);
    return (at % size + size) % size;
}

// Brings a coordinate near to the image, without changing what shows there, so that it can be an integer.
double nearby(double at, int size, EBeyond beyond) {
    if (!std::isfinite(at)) return 0;
    if (beyond == EBeyond::edge) return std::clamp(at, -1.0, size + 1.0);
    return at - std::floor(at / size) * size;
}

std::uint32_t between(std::uint32_t first, std::uint32_t second, std::uint32_t part) {
    const auto mix = [&](std::uint32_t a, std::uint32_t b) {
        return (a * (256 - part) + b * part + 0x800080) >> 8 & 0xff00ff;
    };
    return mix(first >> 8 & 0xff00ff, second >> 8 & 0xff00ff) << 8 | mix(first & 0xff00ff, second & 0xff00ff);
}

class ImageShader : public APaintShader {
public:
    // Reads `image` as long as it lives.
    ImageShader(const AImage& image, const AAffine& toImage, double opacity, EBeyond beyond, bool smooth)
        : m_image(image),
          m_toImage(toImage),
          m_opacity(static_cast<std::uint32_t>(std::lround(opacity * 255))),
          m_beyond(beyond),
          m_smooth(smooth),
          m_isCopy(isWhole(toImage)) {}
    // Keeps `image`.
    ImageShader(AImage&& image, const AAffine& toImage, double opacity, EBeyond beyond)
        : ImageShader(m_own, toImage, opacity, beyond, true) {
        m_own = std::move(image);
    }

    void shade(int x, int y, std::span<std::uint32_t> colors) const override {
        for (std::uint32_t& color : colors) {
            if (m_isCopy) {
                color = pixel(x++ + static_cast<int>(m_toImage.e), y + static_cast<int>(m_toImage.f));
                continue;
            }
            AFPoint at = m_toImage.apply({x++ + 0.5, y + 0.5});
            color = m_smooth ? mixedPixel(at) : nearestPixel(at);
        }
        if (m_opacity == 255) return;
        for (std::uint32_t& color : colors) color = scaledPixel(color, m_opacity);
    }

private:
    // Moved by whole pixels, and not farther than integers reach.
    static bool isWhole(const AAffine& t) {
        constexpr double kFar = 1 << 30;
        return t == AAffine::translation(t.e, t.f) && std::floor(t.e) == t.e && std::floor(t.f) == t.f &&
               std::fabs(t.e) < kFar && std::fabs(t.f) < kFar;
    }

    std::uint32_t pixel(int x, int y) const {
        return m_image.at(within(x, m_image.width(), m_beyond), within(y, m_image.height(), m_beyond));
    }

    std::uint32_t nearestPixel(AFPoint at) const {
        return pixel(static_cast<int>(std::floor(nearby(at.x, m_image.width(), m_beyond))),
                     static_cast<int>(std::floor(nearby(at.y, m_image.height(), m_beyond))));
    }

    // Of the four pixels whose middles are around the point.
    std::uint32_t mixedPixel(AFPoint at) const {
        const double x = nearby(at.x - 0.5, m_image.width(), m_beyond);
        const double y = nearby(at.y - 0.5, m_image.height(), m_beyond);
        const int left = static_cast<int>(std::floor(x));
        const int top = static_cast<int>(std::floor(y));
        const auto right = static_cast<std::uint32_t>(std::lround((x - left) * 256));
        const auto below = static_cast<std::uint32_t>(std::lround((y - top) * 256));
        return between(between(pixel(left, top), pixel(left + 1, top), right),
                       between(pixel(left, top + 1), pixel(left + 1, top + 1), right), below);
    }

    const AImage& m_image;
    AAffine m_toImage;
    std::uint32_t m_opacity;  // of 255
    EBeyond m_beyond;
    bool m_smooth;
    bool m_isCopy;
    AImage m_own;
};

// How many pixels a side has when it is drawn, at most as many as the image has.
int drawnSize(int size, double scale) {
    return std::max(1, static_cast<int>(std::lround(std::min(scale, 1.0) * size)));
}

std::unique_ptr<APaintShader> imageShader(const AImage& image, const AAffine& toPixels, double opacity,
                                          EBeyond beyond, bool smooth) {
    const std::optional<AAffine> toImage = toPixels.inverse();
    opacity = opacityOf(opacity);
    if (image.empty() || opacity <= 0 || !toImage || !toImage->isFinite()) return nullptr;
    const int width = drawnSize(image.width(), std::hypot(toPixels.a, toPixels.b));
    const int height = drawnSize(image.height(), std::hypot(toPixels.c, toPixels.d));
    if (!smooth || (width == image.width() && height == image.height()))
        return std::make_unique<ImageShader>(image, *toImage, opacity, beyond, smooth);
    const AAffine toShrunk = AAffine::scaling(static_cast<double>(width) / image.width(),
                                              static_cast<double>(height) / image.height()) *
                             *toImage;
    return std::make_unique<ImageShader>(shrunkImage(image, width, height), toShrunk, opacity, beyond);
}

// A pixel in the course of being added up.
struct Sum {
    double alpha = 0, red = 0, green = 0, blue = 0;

    void add(const Sum& other, double weight) {
        alpha += other.alpha * weight;
        red += other.red * weight;
        green += other.green * weight;
        blue += other.blue * weight;
    }
};

Sum sumOf(std::uint32_t pixel) {
    return {static_cast<double>(pixel >> 24), static_cast<double>(pixel >> 16 & 255),
            static_cast<double>(pixel >> 8 & 255), static_cast<double>(pixel & 255)};
}

std::uint32_t pixelOf(const Sum& sum) {
    const auto rounded = [](double value) {
        return static_cast<std::uint32_t>(std::min(value + 0.5, 255.0));
    };
    return rounded(sum.alpha) << 24 | rounded(sum.red) << 16 | rounded(sum.green) << 8 | rounded(sum.blue);
}

// Calls back with every old pixel that a new one covers and its part of the new one.
template <class Each>
void eachCovered(int to, double scale, int size, Each each) {
    const double first = to * scale;
    const double last = std::min((to + 1) * scale, static_cast<double>(size));
    for (int at = static_cast<int>(first); at < size && at < last; ++at) {
        const double part = std::min(last, at + 1.0) - std::max(first, static_cast<double>(at));
        if (part > 0) each(at, part / scale);
    }
}

}  // namespace

AImage shrunkImage(const AImage& image, int width, int height) {
    AImage shrunk(width, height);
    const double across = static_cast<double>(image.width()) / width;
    const double down = static_cast<double>(image.height()) / height;
    std::vector<Sum> column(static_cast<std::size_t>(image.width()));
    for (int y = 0; y < height; ++y) {
        std::fill(column.begin(), column.end(), Sum());
        eachCovered(y, down, image.height(), [&](int from, double part) {
            const std::uint32_t* row = image.row(from);
            for (Sum& sum : column) sum.add(sumOf(*row++), part);
        });
        for (int x = 0; x < width; ++x) {
            Sum sum;
            eachCovered(x, across, image.width(), [&](int from, double part) {
                sum.add(column[static_cast<std::size_t>(from)], part);
            });
            shrunk.at(x, y) = pixelOf(sum);
        }
    }
    return shrunk;
}

std::unique_ptr<APaintShader> shaderOf(const AImage& image, const AAffine& toPixels, double opacity,
                                       bool smooth) {
    return imageShader(image, toPixels, opacity, EBeyond::edge, smooth);
}

std::unique_ptr<APaintShader> shaderOf(const ATile& tile, double opacity) {
    return imageShader(tile.image, tile.toPixels, opacity, EBeyond::again, true);
}

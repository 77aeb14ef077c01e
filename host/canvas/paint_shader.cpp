#include "canvas/paint_shader.h"

#include <algorithm>
#include <array>
#include <cmath>

#include "canvas/pixel_mixing.h"

namespace {

class SolidShader : public APaintShader {
public:
    explicit SolidShader(std::uint32_t pixel) : m_pixel(pixel) {}
    void shade(int, int, std::span<std::uint32_t> colors) const override {
        std::fill(colors.begin(), colors.end(), m_pixel);
    }

private:
    std::uint32_t m_pixel;
};

std::unique_ptr<APaintShader> solidShader(const AColor& color, double opacity) {
    const std::uint32_t pixel = multipliedPixel(color, opacity);
    return pixel == 0 ? nullptr : std::make_unique<SolidShader>(pixel);
}

// A gradient ready to be asked: stops whose offsets rise, circles as the coefficients of their equation.
class GradientShader : public APaintShader {
public:
    GradientShader(const AGradient& gradient, const AAffine& toGradient, double opacity)
        : m_gradient(gradient), m_toGradient(toGradient) {
        double offset = 0;
        for (const AGradientStop& stop : gradient.stops) {
            if (stop.offset > offset) offset = std::min(stop.offset, 1.0);
            const COLORREF value = stop.color.getColorRef();
            m_stops.push_back(
                {offset,
                 {static_cast<double>(GetRValue(value)), static_cast<double>(GetGValue(value)),
                  static_cast<double>(GetBValue(value)), opacityOf(stop.color.getOpacity()) * opacity}});
        }
    }

    void shade(int x, int y, std::span<std::uint32_t> colors) const override {
        std::size_t next = 0;
        for (std::uint32_t& color : colors) {
            const std::optional<double> offset =
                gradientOffset(m_gradient, m_toGradient.apply({x++ + 0.5, y + 0.5}));
            color = offset ? colorAt(spreadOffset(*offset, m_gradient.spread), next) : 0;
        }
    }

private:
    using Channels = std::array<double, 4>;  // red, green, blue, opacity
    struct Stop {
        double offset;
        Channels color;
    };

    static std::uint32_t pixelOf(const Channels& c) { return multipliedPixel(c[0], c[1], c[2], c[3]); }

    // `next`: the first stop behind the offset; the neighbouring pixel's is mostly right.
    std::uint32_t colorAt(double offset, std::size_t& next) const {
        while (next < m_stops.size() && m_stops[next].offset <= offset) ++next;
        while (next > 0 && m_stops[next - 1].offset > offset) --next;
        if (next == 0) return pixelOf(m_stops.front().color);
        if (next == m_stops.size()) return pixelOf(m_stops.back().color);
        const Stop& before = m_stops[next - 1];
        const Stop& behind = m_stops[next];
        const double part = (offset - before.offset) / (behind.offset - before.offset);
        Channels mixed;
        for (std::size_t i = 0; i < mixed.size(); ++i)
            mixed[i] = before.color[i] + (behind.color[i] - before.color[i]) * part;
        return pixelOf(mixed);
    }

    AGradient m_gradient;
    AAffine m_toGradient;
    std::vector<Stop> m_stops;
};

bool isPossible(const AGradient& gradient) {
    const std::array<double, 6> numbers{gradient.from.x, gradient.from.y,     gradient.to.x,
                                        gradient.to.y,   gradient.fromRadius, gradient.radius};
    return std::all_of(numbers.begin(), numbers.end(), [](double number) { return std::isfinite(number); }) &&
           gradient.fromRadius >= 0 && gradient.radius >= 0;
}

bool endsAreTheSame(const AGradient& gradient) {
    return gradient.from.x == gradient.to.x && gradient.from.y == gradient.to.y &&
           (!gradient.radial || gradient.fromRadius == gradient.radius);
}

std::unique_ptr<APaintShader> gradientShader(const AGradient& gradient, double opacity) {
    const std::optional<AAffine> toGradient = gradient.toPixels.inverse();
    if (gradient.stops.empty() || opacity <= 0 || !isPossible(gradient) || !toGradient ||
        !toGradient->isFinite()) {
        return nullptr;
    }
    if (gradient.stops.size() == 1 || endsAreTheSame(gradient))
        return solidShader(gradient.stops.back().color, opacity);
    return std::make_unique<GradientShader>(gradient, *toGradient, opacity);
}

std::optional<double> circleOffset(const AGradient& gradient, AFPoint at) {
    // The circle at t has its centre at from + t * along and the radius fromRadius + t * growth; it passes
    // `at` where a t² - 2 b t + c = 0.
    const AFPoint along{gradient.to.x - gradient.from.x, gradient.to.y - gradient.from.y};
    const double growth = gradient.radius - gradient.fromRadius;
    const AFPoint d{at.x - gradient.from.x, at.y - gradient.from.y};
    const double a = along.x * along.x + along.y * along.y - growth * growth;
    const double b = d.x * along.x + d.y * along.y + gradient.fromRadius * growth;
    const double c = d.x * d.x + d.y * d.y - gradient.fromRadius * gradient.fromRadius;
    const auto isCircle = [&](double t) { return std::isfinite(t) && gradient.fromRadius + t * growth >= 0; };
    if (a == 0) {
        const double t = c / (2 * b);
        return isCircle(t) ? std::optional(t) : std::nullopt;
    }
    const double square = b * b - a * c;
    if (!(square >= 0)) return std::nullopt;
    const double root = std::sqrt(square);
    const auto [first, last] = std::minmax({(b - root) / a, (b + root) / a});
    if (isCircle(last)) return last;
    return isCircle(first) ? std::optional(first) : std::nullopt;
}

}  // namespace

std::optional<double> gradientOffset(const AGradient& gradient, AFPoint at) {
    if (gradient.radial) return circleOffset(gradient, at);
    const AFPoint along{gradient.to.x - gradient.from.x, gradient.to.y - gradient.from.y};
    const double offset = ((at.x - gradient.from.x) * along.x + (at.y - gradient.from.y) * along.y) /
                          (along.x * along.x + along.y * along.y);
    return std::isfinite(offset) ? std::optional(offset) : std::nullopt;
}

double spreadOffset(double offset, ESpread spread) {
    switch (spread) {
        case ESpread::pad:
            break;
        case ESpread::repeat:
            return offset - std::floor(offset);
        case ESpread::reflect: {
            const double within = offset - 2 * std::floor(offset / 2);
            return within > 1 ? 2 - within : within;
        }
    }
    return std::clamp(offset, 0.0, 1.0);
}

std::unique_ptr<APaintShader> shaderOf(const APaint& paint) {
    if (paint.gradient) return gradientShader(*paint.gradient, opacityOf(paint.opacity));
    if (paint.tile) return shaderOf(*paint.tile, paint.opacity);
    return solidShader(paint.color, 1);
}

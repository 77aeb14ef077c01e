#include "formats/svg/draw/filter/filter_turbulence.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <utility>

namespace svg {

namespace {

// The random numbers: x' = 16807 x mod (2^31 - 1), never 0.
constexpr std::int64_t kModulus = 2147483647;
constexpr std::int64_t kFactor = 16807;
// Moves the lattice so far that drawings lie on its positive side.
constexpr double kLatticeOffset = 4096;
// Where the lattice ends: beyond it there is no noise.
constexpr double kFarthest = 1 << 28;

class Random {
public:
    explicit Random(double seed) {
        seed = std::clamp(std::isfinite(seed) ? std::trunc(seed) : 0, -2147483647.0, 2147483646.0);
        m_value = static_cast<std::int64_t>(seed);
        if (m_value <= 0) m_value = -(m_value % (kModulus - 1)) + 1;
        m_value = std::min(m_value, kModulus - 1);
    }
    int next() {
        m_value = m_value * kFactor % kModulus;
        return static_cast<int>(m_value);
    }

private:
    std::int64_t m_value;
};

double curve(double t) {
    return t * t * (3 - 2 * t);
}

double mix(double t, double a, double b) {
    return a + t * (b - a);
}

// The frequency next to the wanted one, by ratio, with which a whole number of waves fits.
double fitted(double frequency, double size) {
    if (frequency == 0 || size <= 0) return frequency;
    const double low = std::floor(size * frequency) / size;
    const double high = std::ceil(size * frequency) / size;
    return low > 0 && frequency / low < high / frequency ? low : high;
}

}  // namespace

Turbulence::Turbulence(const Settings& settings) : m_settings(settings) {
    m_settings.octaves = std::clamp(settings.octaves, 0, kMostOctaves);
    fillTables();
    if (m_settings.stitches) fitToTile();
}

void Turbulence::fillTables() {
    Random random(m_settings.seed);
    for (auto& channel : m_gradients) {
        for (std::size_t i = 0; i < kSize; ++i) {
            m_lattice[i] = static_cast<int>(i);
            std::array<double, 2>& gradient = channel[i];
            for (double& one : gradient)
                one = static_cast<double>(random.next() % (2 * kSize) - kSize) / kSize;
            const double length = std::hypot(gradient[0], gradient[1]);
            if (length == 0) continue;
            gradient[0] /= length;
            gradient[1] /= length;
        }
    }
    for (std::size_t i = kSize - 1; i > 0; --i)
        std::swap(m_lattice[i], m_lattice[static_cast<std::size_t>(random.next() % kSize)]);
    for (std::size_t i = 0; i < kSize + 2; ++i) {
        m_lattice[kSize + i] = m_lattice[i];
        for (auto& channel : m_gradients) channel[kSize + i] = channel[i];
    }
}

void Turbulence::fitToTile() {
    Settings& s = m_settings;
    s.frequencyX = fitted(s.frequencyX, s.tileWidth);
    s.frequencyY = fitted(s.frequencyY, s.tileHeight);
    const auto whole = [](double value) {
        return static_cast<int>(std::clamp(std::isfinite(value) ? value : 0, -1e6, 1e6));
    };
    m_stitch.width = whole(s.tileWidth * s.frequencyX + 0.5);
    m_stitch.wrapX = whole(s.tileX * s.frequencyX + kLatticeOffset + m_stitch.width);
    m_stitch.height = whole(s.tileHeight * s.frequencyY + 0.5);
    m_stitch.wrapY = whole(s.tileY * s.frequencyY + kLatticeOffset + m_stitch.height);
}

double Turbulence::noise(std::size_t channel, double x, double y, const Stitch* stitch) const {
    x += kLatticeOffset;
    y += kLatticeOffset;
    if (!(std::fabs(x) < kFarthest && std::fabs(y) < kFarthest)) return 0;
    int x0 = static_cast<int>(x);
    int y0 = static_cast<int>(y);
    int x1 = x0 + 1;
    int y1 = y0 + 1;
    const double rx0 = x - x0;
    const double ry0 = y - y0;
    const double rx1 = rx0 - 1;
    const double ry1 = ry0 - 1;
    if (stitch) {
        if (x0 >= stitch->wrapX) x0 -= stitch->width;
        if (x1 >= stitch->wrapX) x1 -= stitch->width;
        if (y0 >= stitch->wrapY) y0 -= stitch->height;
        if (y1 >= stitch->wrapY) y1 -= stitch->height;
    }
    constexpr int kMask = kSize - 1;
    const auto lattice = [&](int i) { return m_lattice[static_cast<std::size_t>(i)]; };
    const int i = lattice(x0 & kMask);
    const int j = lattice(x1 & kMask);
    y0 &= kMask;
    y1 &= kMask;
    const auto dot = [&](int at, double rx, double ry) {
        const std::array<double, 2>& gradient = m_gradients[channel][static_cast<std::size_t>(lattice(at))];
        return rx * gradient[0] + ry * gradient[1];
    };
    const double sx = curve(rx0);
    const double upper = mix(sx, dot(i + y0, rx0, ry0), dot(j + y0, rx1, ry0));
    const double lower = mix(sx, dot(i + y1, rx0, ry1), dot(j + y1, rx1, ry1));
    return mix(curve(ry0), upper, lower);
}

std::array<double, 4> Turbulence::at(double pointX, double pointY) const {
    std::array<double, 4> result;
    for (std::size_t channel = 0; channel < result.size(); ++channel) {
        Stitch stitch = m_stitch;
        double x = pointX * m_settings.frequencyX;
        double y = pointY * m_settings.frequencyY;
        double sum = 0;
        double ratio = 1;
        for (int octave = 0; octave < m_settings.octaves; ++octave) {
            const double value = noise(channel, x, y, m_settings.stitches ? &stitch : nullptr);
            sum += (m_settings.fractal ? value : std::fabs(value)) / ratio;
            x *= 2;
            y *= 2;
            ratio *= 2;
            // The lattice's offset is not doubled with it.
            stitch.width *= 2;
            stitch.wrapX = 2 * stitch.wrapX - static_cast<int>(kLatticeOffset);
            stitch.height *= 2;
            stitch.wrapY = 2 * stitch.wrapY - static_cast<int>(kLatticeOffset);
        }
        result[channel] = m_settings.fractal ? (sum + 1) / 2 : sum;
    }
    return result;
}

}  // namespace svg

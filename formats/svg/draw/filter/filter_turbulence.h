// Perlin noise with the random numbers that SVG prescribes: every machine computes the same pixels.
#pragma once

#include <array>

namespace svg {

class Turbulence {
public:
    struct Settings {
        double frequencyX = 0, frequencyY = 0;
        int octaves = 1;
        double seed = 0;
        bool fractal = false;   // "fractalNoise", else "turbulence"
        bool stitches = false;  // the noise fits its own other side at the edges of the tile
        double tileX = 0, tileY = 0, tileWidth = 0, tileHeight = 0;
    };
    // Octaves beyond this change a component by less than one.
    static constexpr int kMostOctaves = 9;

    explicit Turbulence(const Settings& settings);

    // Red, green, blue and alpha, not multiplied, at a point of user space; about 0 to 1.
    std::array<double, 4> at(double x, double y) const;

private:
    struct Stitch {
        int width = 0, height = 0, wrapX = 0, wrapY = 0;
    };
    double noise(std::size_t channel, double x, double y, const Stitch* stitch) const;
    void fillTables();
    void fitToTile();

    static constexpr int kSize = 256;
    static constexpr std::size_t kTable = 2 * kSize + 2;
    Settings m_settings;
    Stitch m_stitch;
    std::array<int, kTable> m_lattice{};
    std::array<std::array<std::array<double, 2>, kTable>, 4> m_gradients{};
};

}  // namespace svg

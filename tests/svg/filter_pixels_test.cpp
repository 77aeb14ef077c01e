#include <gtest/gtest.h>

#include "formats/svg/draw/filter/filter_pixels.h"
#include "formats/svg/draw/filter/filter_turbulence.h"

namespace svg {

namespace {

AImage dot(int width, int height, int x, int y, std::uint32_t color = 0xffffffff) {
    AImage image(width, height);
    image.at(x, y) = color;
    return image;
}

double sumOfAlpha(const AImage& image) {
    double sum = 0;
    for (const std::uint32_t pixel : image.pixels()) sum += pixel >> 24;
    return sum;
}

}  // namespace

TEST(FilterPixels, ABlurKeepsTheWeightAndTheMiddle) {
    // Blocks, since a single dot would be lost in rounding.
    for (const double deviation : {0.7, 1.5, 2.0, 3.0, 4.4, 7.0}) {
        AImage image(101, 101);
        fillImage(image, {40, 40, 61, 61}, {1, 1, 1, 1});
        const AImage blurred = blurImage(image, deviation, deviation);
        EXPECT_NEAR(sumOfAlpha(blurred) / sumOfAlpha(image), 1, 0.02) << deviation;
        for (int i = 0; i < 50; ++i) {
            EXPECT_NEAR(static_cast<int>(blurred.at(i, 50) >> 24),
                        static_cast<int>(blurred.at(100 - i, 50) >> 24), 1)
                << deviation;
            EXPECT_NEAR(static_cast<int>(blurred.at(i, 50) >> 24), static_cast<int>(blurred.at(50, i) >> 24),
                        1)
                << deviation;
        }
    }
}

TEST(FilterPixels, AColorIsNeverMoreThanItsAlpha) {
    AImage image = dot(40, 40, 3, 3, 0x80800040);
    image.at(20, 20) = 0xff00ff80;
    for (const double deviation : {0.4, 1.0, 2.5, 100.0}) {
        const AImage blurred = blurImage(image, deviation, deviation);
        for (const std::uint32_t pixel : blurred.pixels()) {
            const std::uint32_t alpha = pixel >> 24;
            EXPECT_TRUE((pixel >> 16 & 255) <= alpha && (pixel >> 8 & 255) <= alpha &&
                        (pixel & 255) <= alpha);
        }
    }
}

TEST(FilterPixels, ThickeningADotGivesARectangle) {
    const AImage thick = thickenImage(dot(20, 20, 10, 10), 3, 1, true);
    for (int y = 0; y < 20; ++y) {
        for (int x = 0; x < 20; ++x) {
            const bool inside = x >= 7 && x <= 13 && y >= 9 && y <= 11;
            EXPECT_EQ(thick.at(x, y), inside ? 0xffffffff : 0u) << x << ' ' << y;
        }
    }
    EXPECT_EQ(thickenImage(thick, 3, 1, false).pixels(), dot(20, 20, 10, 10).pixels());
}

TEST(FilterPixels, LinearColorsComeBack) {
    AImage image(256, 1);
    for (int i = 0; i < 256; ++i) image.at(i, 0) = 0xff000000 | static_cast<unsigned>(i) * 0x10101;
    AImage there = image;
    convertToLinear(there);
    EXPECT_EQ(there.at(255, 0), 0xffffffff);
    EXPECT_EQ(there.at(0, 0), 0xff000000);
    EXPECT_NEAR(static_cast<int>(there.at(188, 0) & 255), 128, 1);
    convertToSrgb(there);
    for (int i = 100; i < 256; ++i) EXPECT_NEAR(static_cast<int>(there.at(i, 0) & 255), i, 2);
}

TEST(FilterPixels, MovingLeavesTransparencyBehind) {
    const AImage image = dot(10, 10, 5, 5);
    EXPECT_EQ(moveImage(image, 3, -2).pixels(), dot(10, 10, 8, 3).pixels());
    EXPECT_EQ(moveImage(image, -6, 0).pixels(), AImage(10, 10).pixels());
    EXPECT_EQ(moveImage(image, 1 << 28, -(1 << 28)).pixels(), AImage(10, 10).pixels());
}

TEST(FilterTurbulence, TheSameSeedGivesTheSameNoise) {
    const Turbulence one({.frequencyX = 0.05, .frequencyY = 0.05, .octaves = 3, .seed = 7, .fractal = true});
    const Turbulence same({.frequencyX = 0.05, .frequencyY = 0.05, .octaves = 3, .seed = 7, .fractal = true});
    const Turbulence other(
        {.frequencyX = 0.05, .frequencyY = 0.05, .octaves = 3, .seed = 8, .fractal = true});
    bool differs = false;
    for (int i = 0; i < 100; ++i) {
        EXPECT_EQ(one.at(i * 1.7, i * 0.9), same.at(i * 1.7, i * 0.9));
        differs |= one.at(i * 1.7, i * 0.9) != other.at(i * 1.7, i * 0.9);
    }
    EXPECT_TRUE(differs);
}

TEST(FilterTurbulence, NoiseVanishesOnItsLattice) {
    const Turbulence noise({.frequencyX = 0.1, .frequencyY = 0.1});
    const Turbulence fractal({.frequencyX = 0.1, .frequencyY = 0.1, .fractal = true});
    for (int i = 0; i < 10; ++i) {
        for (const double value : noise.at(i * 10, i * 20)) EXPECT_NEAR(value, 0, 1e-9);
        for (const double value : fractal.at(i * 10, i * 20)) EXPECT_NEAR(value, 0.5, 1e-9);
    }
}

TEST(FilterTurbulence, StitchedNoiseFitsItsOtherSide) {
    const Turbulence noise({.frequencyX = 0.07,
                            .frequencyY = 0.07,
                            .octaves = 3,
                            .fractal = true,
                            .stitches = true,
                            .tileWidth = 100,
                            .tileHeight = 50});
    for (int i = 0; i < 50; ++i) {
        for (std::size_t channel = 0; channel < 4; ++channel) {
            EXPECT_NEAR(noise.at(0, i)[channel], noise.at(100, i)[channel], 1e-6);
            EXPECT_NEAR(noise.at(i, 0)[channel], noise.at(i, 50)[channel], 1e-6);
        }
    }
}

}  // namespace svg

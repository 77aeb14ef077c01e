#include "canvas/paint_shader.h"

#include <gtest/gtest.h>

#include <array>
#include <cmath>
#include <cstdlib>
#include <limits>

#include "canvas/pixel_mixing.h"

namespace {

const AColor kRed(RGB(255, 0, 0));
const AColor kBlue(RGB(0, 0, 255));
const AColor kSeeThroughGreen(RGB(0, 255, 0), 0.25);

AGradient linear(AFPoint from, AFPoint to) {
    AGradient gradient;
    gradient.from = from;
    gradient.to = to;
    gradient.stops = {{0, kRed}, {1, kBlue}};
    return gradient;
}

AGradient radial(AFPoint from, double fromRadius, AFPoint to, double radius) {
    AGradient gradient = linear(from, to);
    gradient.radial = true;
    gradient.fromRadius = fromRadius;
    gradient.radius = radius;
    return gradient;
}

std::vector<std::uint32_t> row(const APaintShader& shader, int x, int y, std::size_t count) {
    std::vector<std::uint32_t> colors(count);
    shader.shade(x, y, colors);
    return colors;
}

std::vector<std::uint32_t> gradientRow(const AGradient& gradient, int x, int y, std::size_t count) {
    APaint paint;
    paint.gradient = &gradient;
    const std::unique_ptr<APaintShader> shader = shaderOf(paint);
    return shader ? row(*shader, x, y, count) : std::vector<std::uint32_t>();
}

AImage numbered(int width, int height) {
    AImage image(width, height);
    for (std::size_t i = 0; i < image.pixels().size(); ++i)
        image.pixels()[i] = 0xff000000 | static_cast<std::uint32_t>(i * 37 % 256) << 16 |
                            static_cast<std::uint32_t>(i * 11 % 256);
    return image;
}

int largestDifference(std::uint32_t a, std::uint32_t b) {
    int largest = 0;
    for (int shift = 0; shift < 32; shift += 8) {
        largest = std::max(largest,
                           std::abs(static_cast<int>(a >> shift & 255) - static_cast<int>(b >> shift & 255)));
    }
    return largest;
}

// How far the canvas' picture of a paint is from the shader's, in the worst pixel but `but`.
int differenceFromCanvas(const APaint& paint, std::size_t but = 0) {
    constexpr int kSide = 48;
    AImage drawn(kSide, kSide);
    {
        ACanvas canvas(pixelsOf(drawn));
        canvas.fill(APath::rectangle({0, 0, kSide, kSide}), AAffine(), paint, EFillRule::nonZero);
    }
    const std::unique_ptr<APaintShader> shader = shaderOf(paint);
    if (!shader) return 255;
    std::vector<int> differences;
    for (int y = 0; y < kSide; ++y) {
        const std::vector<std::uint32_t> colors = row(*shader, 0, y, kSide);
        for (int x = 0; x < kSide; ++x)
            differences.push_back(largestDifference(colors[static_cast<std::size_t>(x)], drawn.at(x, y)));
    }
    std::sort(differences.begin(), differences.end());
    return differences[differences.size() - 1 - but];
}

}  // namespace

TEST(PixelMixing, NothingAndEverythingAreExact) {
    for (std::uint32_t pixel : {0u, 0xffffffffu, 0xff102030u, 0x80402010u}) {
        EXPECT_EQ(scaledPixel(pixel, 255), pixel);
        EXPECT_EQ(scaledPixel(pixel, 0), 0u);
        EXPECT_EQ(over(pixel, 0), pixel);
        EXPECT_EQ(over(0, pixel), pixel);
        EXPECT_EQ(over(0xff010203, pixel), 0xff010203u);
    }
}

TEST(PixelMixing, BytesAreScaledToTheNearest) {
    for (std::uint32_t value = 0; value < 256; ++value) {
        for (std::uint32_t factor = 0; factor < 256; ++factor) {
            const auto expected = static_cast<std::uint32_t>(std::lround(value * factor / 255.0));
            ASSERT_EQ(scaledBytes(value << 16 | value, factor), expected << 16 | expected);
        }
    }
}

TEST(PixelMixing, HalfRedOverBlueIsPurple) {
    EXPECT_EQ(over(multipliedPixel(AColor(RGB(255, 0, 0), 0.5), 1), 0xff0000ff), 0xff80007fu);
}

TEST(PixelMixing, OpacitiesAreKeptWithinTheirRange) {
    EXPECT_EQ(multipliedPixel(AColor(RGB(1, 2, 3), 7), 1), 0xff010203u);
    EXPECT_EQ(multipliedPixel(AColor(RGB(1, 2, 3), -1), 1), 0u);
    EXPECT_EQ(multipliedPixel(AColor(RGB(1, 2, 3), std::numeric_limits<double>::quiet_NaN()), 1), 0u);
}

TEST(PaintShader, AColorIsTheSameEverywhere) {
    const std::unique_ptr<APaintShader> shader = shaderOf(APaint{AColor(RGB(255, 128, 0))});
    ASSERT_NE(shader, nullptr);
    EXPECT_EQ(row(*shader, -5, 1000, 2), std::vector<std::uint32_t>({0xffff8000, 0xffff8000}));
}

TEST(PaintShader, SpreadsContinueAGradient) {
    EXPECT_EQ(spreadOffset(-0.25, ESpread::pad), 0);
    EXPECT_EQ(spreadOffset(1.25, ESpread::pad), 1);
    EXPECT_EQ(spreadOffset(-0.25, ESpread::repeat), 0.75);
    EXPECT_EQ(spreadOffset(2.25, ESpread::repeat), 0.25);
    EXPECT_EQ(spreadOffset(-0.25, ESpread::reflect), 0.25);
    EXPECT_EQ(spreadOffset(1.25, ESpread::reflect), 0.75);
    EXPECT_EQ(spreadOffset(2.25, ESpread::reflect), 0.25);
}

TEST(PaintShader, ALinearGradientRunsFromItsFirstStopToItsLast) {
    // The middles of two pixels lie at 1/4 and 3/4.
    EXPECT_EQ(gradientRow(linear({0, 0}, {2, 0}), -1, 0, 4),
              std::vector<std::uint32_t>({0xffff0000, 0xffbf0040, 0xff4000bf, 0xff0000ff}));
    // Across it, nothing changes.
    EXPECT_EQ(gradientRow(linear({0, 0}, {0, 2}), 0, 0, 2),
              std::vector<std::uint32_t>({0xffbf0040, 0xffbf0040}));
}

TEST(PaintShader, TwoStopsAtOnePlaceMakeAnEdge) {
    AGradient gradient = linear({0, 0}, {4, 0});
    gradient.stops = {{0, kRed}, {0.5, kRed}, {0.5, kBlue}, {1, kBlue}};
    EXPECT_EQ(gradientRow(gradient, 0, 0, 4),
              std::vector<std::uint32_t>({0xffff0000, 0xffff0000, 0xff0000ff, 0xff0000ff}));
}

TEST(PaintShader, ColorsMixBeforeTheyAreMultiplied) {
    AGradient gradient = linear({0, 0}, {1, 0});
    gradient.stops = {{0, AColor(RGB(255, 0, 0), 0)}, {1, kRed}};
    EXPECT_EQ(gradientRow(gradient, 0, 0, 1), std::vector<std::uint32_t>({0x80800000}));
}

TEST(PaintShader, CirclesPassAPointWhereTheirRadiusSays) {
    const AGradient rings = radial({0, 0}, 0, {0, 0}, 10);
    EXPECT_DOUBLE_EQ(gradientOffset(rings, {3, 4}).value(), 0.5);
    const AGradient focused = radial({5, 0}, 0, {0, 0}, 10);
    EXPECT_DOUBLE_EQ(gradientOffset(focused, {10, 0}).value(), 1);
    EXPECT_DOUBLE_EQ(gradientOffset(focused, {5, 0}).value(), 0);
    EXPECT_DOUBLE_EQ(gradientOffset(focused, {-10, 0}).value(), 1);
}

TEST(PaintShader, NothingIsPaintedBesideACone) {
    // Equal circles make a band, growing ones a cone.
    const AGradient band = radial({0, 0}, 2, {10, 0}, 2);
    EXPECT_FALSE(gradientOffset(band, {5, 3}).has_value());
    // Of the two circles that pass a point of the band, the later one shows.
    EXPECT_DOUBLE_EQ(gradientOffset(band, {5, 0}).value(), 0.7);
    const AGradient cone = radial({0, 0}, 0, {10, 0}, 5);
    EXPECT_FALSE(gradientOffset(cone, {-1, 0}).has_value());
    EXPECT_TRUE(gradientOffset(cone, {20, 0}).has_value());
    AGradient shown = cone;
    shown.toPixels = AAffine::translation(3, 0);
    EXPECT_EQ(gradientRow(shown, 1, 0, 1), std::vector<std::uint32_t>({0}));
}

TEST(PaintShader, AGradientOfNoLengthShowsItsLastColor) {
    EXPECT_EQ(gradientRow(linear({3, 3}, {3, 3}), 0, 0, 1), std::vector<std::uint32_t>({0xff0000ff}));
    EXPECT_EQ(gradientRow(radial({3, 3}, 2, {3, 3}, 2), 0, 0, 1), std::vector<std::uint32_t>({0xff0000ff}));
}

TEST(PaintShader, ImpossiblePaintsPaintNothing) {
    const double nan = std::numeric_limits<double>::quiet_NaN();
    AGradient noStops = linear({0, 0}, {1, 0});
    noStops.stops.clear();
    AGradient flat = linear({0, 0}, {1, 0});
    flat.toPixels = AAffine::scaling(1, 0);
    const ATile nothing;
    ATile flatTile{numbered(2, 2), AAffine::scaling(0)};
    for (const AGradient& gradient :
         {noStops, flat, linear({0, nan}, {1, 0}), radial({0, 0}, 0, {0, 0}, -1)}) {
        APaint paint;
        paint.gradient = &gradient;
        EXPECT_EQ(shaderOf(paint), nullptr);
    }
    for (const ATile* tile : {&nothing, static_cast<const ATile*>(&flatTile)}) {
        APaint paint;
        paint.tile = tile;
        EXPECT_EQ(shaderOf(paint), nullptr);
    }
    EXPECT_EQ(shaderOf(APaint{AColor(RGB(1, 2, 3), 0)}), nullptr);
    EXPECT_EQ(shaderOf(numbered(2, 2), AAffine(), 0, true), nullptr);
}

TEST(PaintShader, AnImageOnWholePixelsIsExact) {
    const AImage image = numbered(5, 4);
    for (bool smooth : {false, true}) {
        const auto shader = shaderOf(image, AAffine::translation(-3, 7), 1, smooth);
        ASSERT_NE(shader, nullptr);
        EXPECT_EQ(row(*shader, -2, 9, 3),
                  std::vector<std::uint32_t>({image.at(1, 2), image.at(2, 2), image.at(3, 2)}));
    }
}

TEST(PaintShader, AnEnlargedImageKeepsItsPixelsOrMixesThem) {
    AImage image(2, 1);
    image.pixels() = {0xff000000, 0xff0000ff};
    EXPECT_EQ(row(*shaderOf(image, AAffine::scaling(4), 1, false), 0, 0, 8),
              std::vector<std::uint32_t>({0xff000000, 0xff000000, 0xff000000, 0xff000000, 0xff0000ff,
                                          0xff0000ff, 0xff0000ff, 0xff0000ff}));
    // Up to the middles of the edge pixels nothing is mixed in.
    EXPECT_EQ(row(*shaderOf(image, AAffine::scaling(4), 1, true), 0, 0, 8),
              std::vector<std::uint32_t>({0xff000000, 0xff000000, 0xff000020, 0xff000060, 0xff00009f,
                                          0xff0000df, 0xff0000ff, 0xff0000ff}));
}

TEST(PaintShader, ASmoothlyReducedImageShowsAverages) {
    AImage image(4, 2);
    image.pixels() = {0xff000000, 0xff000040, 0, 0, 0xff000080, 0xff0000c0, 0, 0xff0000ff};
    EXPECT_EQ(row(*shaderOf(image, AAffine::scaling(0.5), 1, true), 0, 0, 2),
              std::vector<std::uint32_t>({0xff000060, 0x40000040}));
}

TEST(PaintShader, ShrinkingKeepsTheAverage) {
    const AImage image = numbered(7, 5);
    const AImage one = shrunkImage(image, 1, 1);
    double blue = 0;
    for (std::uint32_t pixel : image.pixels()) blue += pixel & 255;
    EXPECT_NEAR(one.at(0, 0) & 255, blue / 35, 0.51);
    EXPECT_EQ(shrunkImage(image, 7, 5).pixels(), image.pixels());
}

TEST(PaintShader, ATileRepeatsForEver) {
    const ATile tile{numbered(3, 2), AAffine::translation(1, 1)};
    const auto shader = shaderOf(tile, 1);
    ASSERT_NE(shader, nullptr);
    for (int y : {-601, -1, 1, 3, 4001}) {
        EXPECT_EQ(row(*shader, -300, y, 4),
                  std::vector<std::uint32_t>(
                      {tile.image.at(2, 0), tile.image.at(0, 0), tile.image.at(1, 0), tile.image.at(2, 0)}))
            << y;
    }
    const ATile remote{tile.image, AAffine::translation(1e15, 0)};
    EXPECT_EQ(row(*shaderOf(remote, 1), 0, 0, 1).size(), 1u);
}

TEST(PaintShader, OpacityCountsForTilesAndGradients) {
    AImage image(1, 1);
    image.pixels() = {0xff0000ff};
    EXPECT_EQ(row(*shaderOf(ATile{image, AAffine()}, 0.5), 0, 0, 1),
              std::vector<std::uint32_t>({0x80000080}));
    AGradient gradient = linear({0, 0}, {1, 0});
    gradient.stops = {{0, kBlue}};
    APaint paint;
    paint.gradient = &gradient;
    paint.opacity = 0.5;
    EXPECT_EQ(row(*shaderOf(paint), 0, 0, 1), std::vector<std::uint32_t>({0x80000080}));
}

// The canvas and the shader know nothing of each other on one of the two builds.
TEST(PaintShader, CanvasesShowTheSameGradients) {
    AGradient gradient = linear({10, 5}, {30, 25});
    gradient.stops = {{0, kRed}, {0.3, kSeeThroughGreen}, {1, kBlue}};
    AGradient rings = radial({20, 20}, 3, {26, 24}, 20);
    rings.stops = gradient.stops;
    AGradient cone = radial({8, 24}, 2, {40, 24}, 8);
    for (AGradient each : {gradient, rings, cone}) {
        for (ESpread spread : {ESpread::pad, ESpread::reflect, ESpread::repeat}) {
            for (const AAffine& transform : {AAffine(), AAffine{0.8, 0.3, -0.2, 1.1, 2, -3}}) {
                each.spread = spread;
                each.toPixels = transform;
                APaint paint;
                paint.gradient = &each;
                paint.opacity = 0.8;
                // An edge, of a cone or between repetitions, may fall to either side of a pixel's middle.
                const bool hasEdges = spread == ESpread::repeat || each.fromRadius == 2;
                EXPECT_LE(differenceFromCanvas(paint, hasEdges ? 48 : 0), 3)
                    << "spread " << static_cast<int>(spread) << ", radial " << each.radial << " from "
                    << each.fromRadius << ", transform " << transform.a;
            }
        }
    }
}

TEST(PaintShader, CanvasesShowTheSameTiles) {
    for (const AAffine& transform :
         {AAffine::translation(3, -2), AAffine::scaling(3), AAffine{0.8, 0.6, -0.6, 0.8, 5, 1}}) {
        const ATile tile{numbered(5, 4), transform};
        APaint paint;
        paint.tile = &tile;
        EXPECT_LE(differenceFromCanvas(paint), 8) << transform.a;
    }
}

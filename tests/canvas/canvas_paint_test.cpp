// Gradients, tiles and images on a canvas.
#include <gtest/gtest.h>

#include "support/canvas_picture.h"

using namespace test;

namespace {

const AAffine kAsIs;
const AColor kBlack(RGB(0, 0, 0));
const AColor kWhite(RGB(255, 255, 255));
constexpr int kClose = 8;

// A picture filled with a gradient.
Picture& filled(Picture& picture, const AGradient& gradient, double opacity = 1) {
    const AFRect all{0, 0, static_cast<double>(picture.image.width()),
                     static_cast<double>(picture.image.height())};
    APaint paint;
    paint.gradient = &gradient;
    paint.opacity = opacity;
    picture.canvas.fill(APath::rectangle(all), kAsIs, paint, EFillRule::nonZero);
    return picture;
}

AGradient linear(AFPoint from, AFPoint to, std::vector<AGradientStop> stops) {
    AGradient gradient;
    gradient.from = from;
    gradient.to = to;
    gradient.stops = std::move(stops);
    return gradient;
}

// The middle of a pixel lies half a pixel further.
int graysBetween(double from, double to, int x) {
    return static_cast<int>((x + 0.5 - from) / (to - from) * 255);
}

}  // namespace

TEST(CanvasGradient, RunsAlongItsLine) {
    Picture picture(20, 4);
    filled(picture, linear({0, 0}, {20, 0}, {{0, kBlack}, {1, kWhite}}));
    for (int x = 0; x < 20; ++x) {
        EXPECT_NEAR(redOf(picture.at(x, 1)), graysBetween(0, 20, x), kClose) << x;
        EXPECT_EQ(picture.at(x, 0), picture.at(x, 3)) << x;
        EXPECT_EQ(alphaOf(picture.at(x, 0)), 255);
    }
}

TEST(CanvasGradient, PassesItsStops) {
    Picture picture(40, 1);
    filled(picture, linear({0, 0}, {40, 0},
                           {{0, AColor(RGB(255, 0, 0))}, {0.25, AColor(RGB(0, 255, 0))}, {1, kBlack}}));
    EXPECT_NEAR(redOf(picture.at(0, 0)), 242, 2 * kClose);
    EXPECT_NEAR(greenOf(picture.at(9, 0)), 242, 2 * kClose);
    EXPECT_NEAR(greenOf(picture.at(25, 0)), 127 - 2, kClose);
    EXPECT_EQ(redOf(picture.at(25, 0)), 0);
}

TEST(CanvasGradient, SpreadsInThreeWays) {
    AGradient gradient = linear({10, 0}, {20, 0}, {{0, kBlack}, {1, kWhite}});
    Picture pad(40, 1);
    filled(pad, gradient);
    EXPECT_NEAR(redOf(pad.at(3, 0)), 0, kClose);
    EXPECT_NEAR(redOf(pad.at(14, 0)), graysBetween(10, 20, 14), kClose);
    EXPECT_NEAR(redOf(pad.at(33, 0)), 255, kClose);
    gradient.spread = ESpread::repeat;
    Picture repeat(40, 1);
    filled(repeat, gradient);
    for (int x : {4, 14, 24, 34}) EXPECT_NEAR(redOf(repeat.at(x, 0)), graysBetween(10, 20, 14), kClose) << x;
    EXPECT_LT(redOf(repeat.at(20, 0)), 64);
    EXPECT_GT(redOf(repeat.at(9, 0)), 192);
    gradient.spread = ESpread::reflect;
    Picture reflect(40, 1);
    filled(reflect, gradient);
    EXPECT_NEAR(redOf(reflect.at(14, 0)), graysBetween(10, 20, 14), kClose);
    EXPECT_NEAR(redOf(reflect.at(25, 0)), graysBetween(10, 20, 14), kClose);
    EXPECT_NEAR(redOf(reflect.at(5, 0)), graysBetween(10, 20, 14), kClose);
    EXPECT_NEAR(redOf(reflect.at(34, 0)), graysBetween(10, 20, 14), kClose);
}

TEST(CanvasGradient, OfTheUnitSquareIsExactOnALargeArea) {
    AGradient gradient = linear({0, 0}, {1, 0}, {{0, kBlack}, {1, kWhite}});
    gradient.toPixels = AAffine::scaling(2'000, 10);
    Picture picture(2'000, 1);
    filled(picture, gradient);
    for (int x : {0, 500, 1'000, 1'500, 1'999})
        EXPECT_NEAR(redOf(picture.at(x, 0)), graysBetween(0, 2'000, x), 2) << x;
}

TEST(CanvasGradient, ItsLinesOfOneColourAreTransformed) {
    // Slanted: x' = x + y. The colour of a pixel is that of x = x' - y.
    AGradient gradient = linear({0, 0}, {20, 0}, {{0, kBlack}, {1, kWhite}});
    gradient.toPixels = {1, 0, 1, 1, 0, 0};
    Picture picture(30, 10);
    filled(picture, gradient);
    for (int y : {0, 4, 9}) {
        for (int x : {12, 15, 18}) {
            EXPECT_NEAR(redOf(picture.at(x, y)), (x + 0.5 - (y + 0.5)) / 20 * 255, kClose) << x << "," << y;
        }
    }
}

TEST(CanvasGradient, RunsAroundItsCentre) {
    AGradient gradient;
    gradient.radial = true;
    gradient.from = gradient.to = {20, 20};
    gradient.radius = 20;
    gradient.stops = {{0, kBlack}, {1, kWhite}};
    Picture picture(40, 40);
    filled(picture, gradient);
    for (int distance : {2, 8, 14, 18}) {
        const double expected = (distance + 0.5) / 20 * 255;
        EXPECT_NEAR(redOf(picture.at(20 + distance, 20)), expected, kClose);
        EXPECT_NEAR(redOf(picture.at(19 - distance, 19)), expected, kClose);
        EXPECT_NEAR(redOf(picture.at(20, 20 + distance)), expected, kClose);
    }
    EXPECT_NEAR(redOf(picture.at(0, 0)), 255, kClose);
}

TEST(CanvasGradient, RunsFromItsFocusToItsCircle) {
    AGradient gradient;
    gradient.radial = true;
    gradient.from = {10, 20};
    gradient.to = {20, 20};
    gradient.radius = 20;
    gradient.stops = {{0, kBlack}, {1, kWhite}};
    Picture picture(40, 40);
    filled(picture, gradient);
    // To the left the way from the focus is 10 long, to the right 30.
    EXPECT_NEAR(redOf(picture.at(4, 20)), 5.5 / 10 * 255, 2 * kClose);
    EXPECT_NEAR(redOf(picture.at(25, 20)), 15.5 / 30 * 255, 2 * kClose);
}

TEST(CanvasGradient, CirclesBecomeEllipses) {
    AGradient gradient;
    gradient.radial = true;
    gradient.radius = 1;
    gradient.stops = {{0, kBlack}, {1, kWhite}};
    gradient.toPixels = AAffine::translation(40, 10) * AAffine::scaling(40, 10);
    Picture picture(80, 20);
    filled(picture, gradient);
    EXPECT_NEAR(redOf(picture.at(60, 10)), 130, kClose + 2);
    EXPECT_NEAR(redOf(picture.at(40, 15)), 140, kClose + 2);
}

TEST(CanvasGradient, WithOneStopIsAColourAndWithNoneNothing) {
    Picture none(2, 1);
    filled(none, linear({0, 0}, {2, 0}, {}));
    EXPECT_EQ(none.rows(), "..\n");
    Picture one(2, 1);
    filled(one, linear({0, 0}, {2, 0}, {{0.5, AColor(RGB(255, 0, 0))}}));
    EXPECT_EQ(one.rows(), "rr\n");
}

TEST(CanvasGradient, OpacityIsThatOfItsStopsTimesThatOfThePaint) {
    Picture picture(2, 1);
    filled(picture, linear({0, 0}, {2, 0}, {{0, AColor(RGB(0, 0, 0), 0.5)}, {1, AColor(RGB(0, 0, 0), 0.5)}}),
           0.5);
    EXPECT_NEAR(alphaOf(picture.at(0, 0)), 64, 3);
}

TEST(CanvasGradient, OfImpossibleNumbersLeavesTheCanvasUsable) {
    Picture picture(2, 1);
    for (double bad : {1e300, -1e300, 1e-300, 1e12, std::numeric_limits<double>::quiet_NaN(),
                       std::numeric_limits<double>::infinity()}) {
        AGradient gradient = linear({0, 0}, {bad, 0}, {{0, kBlack}, {bad, kWhite}, {1, kWhite}});
        filled(picture, gradient);
        gradient.toPixels = AAffine::scaling(bad, 1);
        filled(picture, gradient);
        gradient.radial = true;
        gradient.radius = bad;
        filled(picture, gradient);
        gradient.toPixels = {1, 1, 1, 1, bad, 0};
        filled(picture, gradient);
    }
    filled(picture, linear({0, 0}, {2, 0}, {{0.5, AColor(RGB(255, 0, 0))}}));
    EXPECT_EQ(picture.rows(), "rr\n");
}

TEST(CanvasGradient, PaintsStrokes) {
    const AGradient gradient = linear({0, 0}, {20, 0}, {{0, kBlack}, {1, kWhite}});
    APaint paint;
    paint.gradient = &gradient;
    APath line;
    line.moveTo({0, 2});
    line.lineTo({20, 2});
    AStrokeStyle style;
    style.width = 2;
    Picture picture(20, 4);
    picture.canvas.stroke(line, kAsIs, paint, style);
    EXPECT_NEAR(redOf(picture.at(15, 1)), graysBetween(0, 20, 15), kClose);
    EXPECT_EQ(picture.at(15, 0), 0U);
    EXPECT_EQ(picture.at(15, 3), 0U);
}

TEST(CanvasTile, RepeatsInBothDirections) {
    const ATile tile{imageOf("rg\nb.\n"), kAsIs};
    APaint paint;
    paint.tile = &tile;
    Picture picture(5, 3);
    picture.canvas.fill(APath::rectangle({0, 0, 5, 3}), kAsIs, paint, EFillRule::nonZero);
    EXPECT_EQ(picture.rows(), "rgrgr\nb.b.b\nrgrgr\n");
}

TEST(CanvasTile, StartsWhereItsTransformPutsIt) {
    for (double distance : {0.0, 2e6, -2e6}) {
        const ATile tile{imageOf("rg\nb.\n"), AAffine::translation(1 + distance, 1)};
        APaint paint;
        paint.tile = &tile;
        Picture picture(5, 3);
        picture.canvas.fill(APath::rectangle({0, 0, 5, 2}), kAsIs, paint, EFillRule::nonZero);
        EXPECT_EQ(picture.rows(), ".b.b.\ngrgrg\n.....\n") << distance;
    }
}

TEST(CanvasTile, IsEnlargedByItsTransform) {
    const ATile tile{imageOf("rrrrbbbb\n"), AAffine::scaling(3)};
    APaint paint;
    paint.tile = &tile;
    Picture picture(30, 1);
    picture.canvas.fill(APath::rectangle({0, 0, 30, 1}), kAsIs, paint, EFillRule::nonZero);
    // Away from the colours' edges, where they may be mixed.
    for (int x : {4, 6, 7, 28}) EXPECT_EQ(redOf(picture.at(x, 0)), 255) << x;
    for (int x : {16, 18, 19}) EXPECT_EQ(blueOf(picture.at(x, 0)), 255) << x;
}

TEST(CanvasTile, HasTheOpacityOfThePaint) {
    const ATile tile{imageOf("r\n"), kAsIs};
    APaint paint;
    paint.tile = &tile;
    paint.opacity = 0.5;
    Picture picture(2, 1);
    picture.canvas.fill(APath::rectangle({0, 0, 2, 1}), kAsIs, paint, EFillRule::nonZero);
    EXPECT_NEAR(alphaOf(picture.at(1, 0)), 128, 2);
    EXPECT_NEAR(redOf(picture.at(1, 0)), 128, 2);
    EXPECT_EQ(greenOf(picture.at(1, 0)), 0);
}

TEST(CanvasTile, WithoutAnImagePaintsNothing) {
    const ATile tile{AImage(), kAsIs};
    APaint paint;
    paint.tile = &tile;
    Picture picture(2, 1);
    picture.canvas.fill(APath::rectangle({0, 0, 2, 1}), kAsIs, paint, EFillRule::nonZero);
    EXPECT_EQ(picture.rows(), "..\n");
}

TEST(CanvasImage, IsDrawnPixelByPixel) {
    Picture picture(4, 3);
    picture.canvas.drawImage(imageOf("rg\nb.\n"), AAffine::translation(1, 1), 1, false);
    EXPECT_EQ(picture.rows(), "....\n.rg.\n.b..\n");
    Picture smooth(4, 3);
    smooth.canvas.drawImage(imageOf("rg\nb.\n"), AAffine::translation(1, 1), 1, true);
    EXPECT_EQ(smooth.rows(), "....\n.rg.\n.b..\n");
}

TEST(CanvasImage, IsEnlargedByItsNearestPixels) {
    Picture picture(6, 4);
    picture.canvas.drawImage(imageOf("rgb\nbrg\n"), AAffine::scaling(2), 1, false);
    EXPECT_EQ(picture.rows(), "rrggbb\nrrggbb\nbbrrgg\nbbrrgg\n");
}

TEST(CanvasImage, IsTurned) {
    Picture picture(2, 3);
    picture.canvas.drawImage(imageOf("rgb\nwk.\n"), AAffine{0, 1, -1, 0, 2, 0}, 1, false);
    EXPECT_EQ(picture.rows(), "wr\nkg\n.b\n");
}

TEST(CanvasImage, EnlargedSmoothlyMixesInsideAndKeepsItsEdges) {
    Picture picture(40, 20);
    picture.canvas.drawImage(imageOf("kw\nkw\n"), AAffine::translation(0, 0) * AAffine::scaling(20, 10), 1,
                             true);
    EXPECT_NEAR(redOf(picture.at(0, 0)), 0, kClose);
    EXPECT_NEAR(redOf(picture.at(39, 19)), 255, kClose);
    EXPECT_NEAR(redOf(picture.at(20, 10)), 128, 24);
    EXPECT_EQ(alphaOf(picture.at(0, 0)), 255);
    EXPECT_EQ(alphaOf(picture.at(39, 19)), 255);
}

TEST(CanvasImage, HasAnOpacity) {
    Picture picture(2, 1);
    picture.canvas.drawImage(imageOf("wr\n"), kAsIs, 0.25, false);
    EXPECT_NEAR(alphaOf(picture.at(0, 0)), 64, 2);
    EXPECT_NEAR(greenOf(picture.at(0, 0)), 64, 2);
    EXPECT_EQ(greenOf(picture.at(1, 0)), 0);
    picture.canvas.drawImage(imageOf("kk\n"), kAsIs, 0, false);
    EXPECT_EQ(greenOf(picture.at(1, 0)), 0);
}

TEST(CanvasImage, IsCutByClips) {
    Picture picture(4, 1);
    picture.canvas.pushClip(APath::rectangle({1, 0, 3, 1}), kAsIs, EFillRule::nonZero);
    picture.canvas.drawImage(imageOf("rgbw\n"), kAsIs, 1, false);
    EXPECT_EQ(picture.rows(), ".gb.\n");
}

TEST(CanvasImage, AnEmptyOneDrawsNothing) {
    Picture picture(2, 1);
    picture.canvas.drawImage(AImage(), kAsIs, 1, true);
    EXPECT_EQ(picture.rows(), "..\n");
}

TEST(CanvasImage, NeedNotOutliveTheCall) {
    Picture picture(2, 1);
    { picture.canvas.drawImage(imageOf("rg\n"), kAsIs, 1, false); }
    picture.canvas.pushClip(APath::rectangle({0, 0, 1, 1}), kAsIs, EFillRule::nonZero);
    picture.canvas.popClip();
    EXPECT_EQ(picture.rows(), "rg\n");
}

// Fills, strokes and clips. Edges lie on pixel edges, where every build is exact.
#include "canvas/canvas.h"

#include <gtest/gtest.h>

#include <cmath>
#include <cstdlib>
#include <limits>

#include "support/canvas_picture.h"

using namespace test;

namespace {

const AAffine kAsIs;
const APaint kRed{AColor(RGB(255, 0, 0))};
const APaint kBlue{AColor(RGB(0, 0, 255))};
constexpr double kInfinite = std::numeric_limits<double>::infinity();
constexpr double kNoNumber = std::numeric_limits<double>::quiet_NaN();

APath box(double left, double top, double right, double bottom) {
    return APath::rectangle({left, top, right, bottom});
}

void append(APath& path, const AFRect& rect) {
    path.moveTo({rect.left, rect.top});
    path.lineTo({rect.right, rect.top});
    path.lineTo({rect.right, rect.bottom});
    path.lineTo({rect.left, rect.bottom});
    path.close();
}

APath lines(std::initializer_list<AFPoint> points) {
    APath path;
    for (const AFPoint& point : points) path.empty() ? path.moveTo(point) : path.lineTo(point);
    return path;
}

AStrokeStyle wide(double width) {
    AStrokeStyle style;
    style.width = width;
    return style;
}

void fill(ACanvas& canvas, const APath& path, const APaint& paint) {
    canvas.fill(path, kAsIs, paint, EFillRule::nonZero);
}

}  // namespace

TEST(Canvas, FillsToPixelEdges) {
    Picture picture(6, 4);
    fill(picture.canvas, box(1, 1, 5, 3), kRed);
    EXPECT_EQ(picture.rows(), "......\n.rrrr.\n.rrrr.\n......\n");
}

TEST(Canvas, TransformsWhatItFills) {
    Picture picture(6, 4);
    picture.canvas.fill(box(0, 0, 1, 2), AAffine{0, 1, -2, 0, 5, 1}, kRed, EFillRule::nonZero);
    EXPECT_EQ(picture.rows(), "......\n.rrrr.\n......\n......\n");
}

TEST(Canvas, FillsByBothRules) {
    APath twice = box(0, 0, 6, 4);
    append(twice, {2, 1, 4, 3});
    Picture evenOdd(6, 4);
    evenOdd.canvas.fill(twice, kAsIs, kRed, EFillRule::evenOdd);
    EXPECT_EQ(evenOdd.rows(), "rrrrrr\nrr..rr\nrr..rr\nrrrrrr\n");
    Picture nonZero(6, 4);
    nonZero.canvas.fill(twice, kAsIs, kRed, EFillRule::nonZero);
    EXPECT_EQ(nonZero.rows(), "rrrrrr\nrrrrrr\nrrrrrr\nrrrrrr\n");
}

TEST(Canvas, FillsOpenFiguresAsIfTheyWereClosed) {
    Picture picture(4, 2);
    fill(picture.canvas, lines({{1, 0}, {3, 0}, {3, 2}, {1, 2}}), kRed);
    EXPECT_EQ(picture.rows(), ".rr.\n.rr.\n");
}

TEST(Canvas, MixesByOpacity) {
    Picture picture(3, 1);
    fill(picture.canvas, box(0, 0, 3, 1), {AColor(RGB(255, 255, 255))});
    fill(picture.canvas, box(1, 0, 2, 1), {AColor(RGB(0, 0, 0), 0.5)});
    fill(picture.canvas, box(2, 0, 3, 1), {AColor(RGB(0, 0, 0), 0)});
    EXPECT_EQ(picture.at(0, 0), 0xffffffff);
    EXPECT_NEAR(redOf(picture.at(1, 0)), 128, 2);
    EXPECT_EQ(alphaOf(picture.at(1, 0)), 255);
    EXPECT_EQ(picture.at(2, 0), 0xffffffff);
}

TEST(Canvas, PixelsHoldTheirColourMultipliedByAlpha) {
    Picture picture(1, 1);
    fill(picture.canvas, box(0, 0, 1, 1), {AColor(RGB(255, 0, 100), 0.5)});
    EXPECT_NEAR(alphaOf(picture.at(0, 0)), 128, 2);
    EXPECT_NEAR(redOf(picture.at(0, 0)), 128, 2);
    EXPECT_EQ(greenOf(picture.at(0, 0)), 0);
    EXPECT_NEAR(blueOf(picture.at(0, 0)), 50, 2);
}

TEST(Canvas, PixelsWithoutAlphaTakeColoursAsWell) {
    std::vector<DWORD> rows(2, 0xffffff);
    {
        ACanvas canvas(APixels{rows.data(), 2, 1, false});
        fill(canvas, box(1, 0, 2, 1), kRed);
    }
    EXPECT_EQ(rows[0] & 0xffffff, 0xffffffU);
    EXPECT_EQ(rows[1] & 0xffffff, 0xff0000U);
}

TEST(Canvas, CurvesBulge) {
    APath curve;
    curve.moveTo({0, 4});
    curve.curveTo({0, -1.4}, {6, -1.4}, {6, 4});
    curve.close();
    Picture picture(6, 4);
    fill(picture.canvas, curve, kRed);
    EXPECT_LT(alphaOf(picture.at(0, 0)), 64);
    EXPECT_LT(alphaOf(picture.at(5, 0)), 64);
    EXPECT_EQ(picture.at(2, 2), 0xffff0000);
    EXPECT_EQ(picture.at(3, 3), 0xffff0000);
}

// Of so many curves; as small ones are nearly flat, the canvas may draw them as lines.
APath circleOf(int curves, double radius) {
    const double step = 2 * 3.14159265358979323846 / curves;
    const double reach = 4.0 / 3 * std::tan(step / 4) * radius;
    const auto at = [&](int i) {
        return AFPoint{10 + radius * std::cos(i * step), 10 + radius * std::sin(i * step)};
    };
    const auto along = [&](int i, double length) {
        return AFPoint{at(i).x - length * std::sin(i * step), at(i).y + length * std::cos(i * step)};
    };
    APath path;
    path.moveTo(at(0));
    for (int i = 1; i <= curves; ++i) path.curveTo(along(i - 1, reach), along(i, -reach), at(i));
    path.close();
    return path;
}

TEST(Canvas, CurvesThatAreNearlyFlatBulgeAsFewLargeOnesDo) {
    for (const double radius : {0.6, 2.0, 8.0}) {
        for (const double pen : {0.0, 0.3, 1.0}) {
            const auto drawn = [&](int curves) {
                AImage image(20, 20);
                ACanvas canvas(pixelsOf(image));
                if (pen > 0)
                    canvas.stroke(circleOf(curves, radius), kAsIs, kRed, wide(pen));
                else
                    fill(canvas, circleOf(curves, radius), kRed);
                canvas.flush();
                return image;
            };
            const AImage few = drawn(4);
            const AImage many = drawn(40);
            int most = 0;
            for (std::size_t i = 0; i < few.pixels().size(); ++i) {
                const auto alpha = [i](const AImage& image) {
                    return static_cast<int>(image.pixels()[i] >> 24);
                };
                most = std::max(most, std::abs(alpha(few) - alpha(many)));
            }
            EXPECT_LE(most, 26) << "radius " << radius << ", pen " << pen;
        }
    }
}

TEST(Canvas, StrokesHaveTheirWidthAndFlatEnds) {
    Picture picture(6, 4);
    picture.canvas.stroke(lines({{1, 2}, {5, 2}}), kAsIs, kRed, wide(2));
    EXPECT_EQ(picture.rows(), "......\n.rrrr.\n.rrrr.\n......\n");
}

TEST(Canvas, SquareEndsReachHalfTheWidthFurther) {
    AStrokeStyle style = wide(2);
    style.cap = ELineCap::square;
    Picture picture(6, 4);
    picture.canvas.stroke(lines({{2, 2}, {4, 2}}), kAsIs, kRed, style);
    EXPECT_EQ(picture.rows(), "......\n.rrrr.\n.rrrr.\n......\n");
}

TEST(Canvas, RoundEndsReachAsFarButLeaveTheCorners) {
    AStrokeStyle style = wide(8);
    style.cap = ELineCap::round;
    Picture picture(16, 8);
    picture.canvas.stroke(lines({{4, 4}, {12, 4}}), kAsIs, kRed, style);
    EXPECT_LT(alphaOf(picture.at(0, 0)), 64);
    EXPECT_LT(alphaOf(picture.at(15, 7)), 64);
    EXPECT_GT(alphaOf(picture.at(1, 4)), 192);
    EXPECT_GT(alphaOf(picture.at(14, 3)), 192);
}

TEST(Canvas, DotsShowWithRoundAndSquareEndsOnly) {
    const APath dot = lines({{2, 2}, {2, 2}});
    AStrokeStyle style = wide(2);
    Picture butt(4, 4);
    butt.canvas.stroke(dot, kAsIs, kRed, style);
    EXPECT_EQ(butt.rows(), "....\n....\n....\n....\n");
    style.cap = ELineCap::square;
    Picture square(4, 4);
    square.canvas.stroke(dot, kAsIs, kRed, style);
    EXPECT_EQ(square.rows(), "....\n.rr.\n.rr.\n....\n");
    style.cap = ELineCap::round;
    style.width = 4;
    Picture round(4, 4);
    round.canvas.stroke(dot, kAsIs, kRed, style);
    EXPECT_EQ(round.at(1, 1), 0xffff0000);
    EXPECT_EQ(round.at(2, 2), 0xffff0000);
}

TEST(Canvas, MitersFillTheCornerAndBevelsCutIt) {
    const APath corner = lines({{0, 2}, {6, 2}, {6, 8}});
    AStrokeStyle style = wide(4);
    Picture miter(8, 8);
    miter.canvas.stroke(corner, kAsIs, kRed, style);
    EXPECT_EQ(miter.rows(),
              "rrrrrrrr\nrrrrrrrr\nrrrrrrrr\nrrrrrrrr\n....rrrr\n....rrrr\n....rrrr\n....rrrr\n");
    style.join = ELineJoin::bevel;
    Picture bevel(8, 8);
    bevel.canvas.stroke(corner, kAsIs, kRed, style);
    EXPECT_EQ(bevel.at(7, 0), 0U);
    EXPECT_EQ(bevel.at(5, 1), 0xffff0000);
    style.join = ELineJoin::round;
    Picture round(8, 8);
    round.canvas.stroke(corner, kAsIs, kRed, style);
    EXPECT_LT(alphaOf(round.at(7, 0)), 128);
    EXPECT_EQ(round.at(6, 1), 0xffff0000);
}

TEST(Canvas, AMiterBeyondItsLimitIsABevel) {
    // At a right angle a miter is 1.41 times as long as the line is wide.
    const APath corner = lines({{0, 2}, {6, 2}, {6, 8}});
    AStrokeStyle style = wide(4);
    style.miterLimit = 1.2;
    Picture picture(8, 8);
    picture.canvas.stroke(corner, kAsIs, kRed, style);
    EXPECT_EQ(picture.at(7, 0), 0U);
    style.miterLimit = 1.5;
    picture.canvas.stroke(corner, kAsIs, kRed, style);
    EXPECT_EQ(picture.at(7, 0), 0xffff0000);
}

TEST(Canvas, ClosedFiguresHaveNoEnds) {
    Picture picture(6, 6);
    picture.canvas.stroke(box(1, 1, 5, 5), kAsIs, kRed, wide(2));
    EXPECT_EQ(picture.rows(), "rrrrrr\nrrrrrr\nrr..rr\nrr..rr\nrrrrrr\nrrrrrr\n");
}

TEST(Canvas, DashesAndGapsTakeTurns) {
    AStrokeStyle style = wide(2);
    style.dashes = {2, 1};
    Picture picture(10, 2);
    picture.canvas.stroke(lines({{0, 1}, {10, 1}}), kAsIs, kRed, style);
    EXPECT_EQ(picture.rows(), "rr.rr.rr.r\nrr.rr.rr.r\n");
}

TEST(Canvas, AnOddNumberOfDashesTakesTurnsAsWell) {
    AStrokeStyle style = wide(2);
    style.dashes = {2, 1, 1};
    Picture picture(10, 2);
    picture.canvas.stroke(lines({{0, 1}, {10, 1}}), kAsIs, kRed, style);
    // Two on, one off, one on; then two off, one on, one off.
    EXPECT_EQ(picture.rows(), "rr.r..r.rr\nrr.r..r.rr\n");
}

TEST(Canvas, DashesStartAtTheirOffset) {
    for (double offset : {1.0, 1.0 + 3 * 1e6, 1.0 - 3}) {
        AStrokeStyle style = wide(2);
        style.dashes = {2, 1};
        style.dashOffset = offset;
        Picture picture(7, 2);
        picture.canvas.stroke(lines({{0, 1}, {7, 1}}), kAsIs, kRed, style);
        EXPECT_EQ(picture.rows(), "r.rr.rr\nr.rr.rr\n") << offset;
    }
}

TEST(Canvas, ImpossibleDashesAreALineWithoutGaps) {
    for (const std::vector<double>& dashes : {std::vector<double>{2, -1}, {0, 0}, {0}}) {
        AStrokeStyle style = wide(2);
        style.dashes = dashes;
        Picture picture(6, 2);
        picture.canvas.stroke(lines({{0, 1}, {6, 1}}), kAsIs, kRed, style);
        EXPECT_EQ(picture.rows(), "rrrrrr\nrrrrrr\n");
    }
}

TEST(Canvas, TheTransformShapesThePenAndItsDashes) {
    AStrokeStyle style = wide(2);
    style.dashes = {1, 1};
    // Twice as wide, but not higher: a level line has longer dashes, an upright one is thicker.
    Picture level(8, 2);
    level.canvas.stroke(lines({{0, 1}, {4, 1}}), AAffine::scaling(2, 1), kRed, style);
    EXPECT_EQ(level.rows(), "rr..rr..\nrr..rr..\n");
    Picture upright(6, 4);
    upright.canvas.stroke(lines({{1.5, 0}, {1.5, 4}}), AAffine::scaling(2, 1), kRed, style);
    EXPECT_EQ(upright.rows(), ".rrrr.\n......\n.rrrr.\n......\n");
    Picture larger(8, 4);
    larger.canvas.stroke(lines({{0, 1}, {4, 1}}), AAffine::scaling(2), kRed, style);
    EXPECT_EQ(larger.rows(), "rr..rr..\nrr..rr..\nrr..rr..\nrr..rr..\n");
}

TEST(Canvas, ClipsCutAndEndAgain) {
    Picture picture(6, 3);
    picture.canvas.pushClip(box(1, 0, 5, 3), kAsIs, EFillRule::nonZero);
    picture.canvas.pushClip(box(0, 1, 3, 3), kAsIs, EFillRule::nonZero);
    fill(picture.canvas, box(-9, -9, 9, 9), kRed);
    EXPECT_EQ(picture.rows(), "......\n.rr...\n.rr...\n");
    picture.canvas.popClip();
    fill(picture.canvas, box(-9, 0, 9, 1), kBlue);
    EXPECT_EQ(picture.rows(), ".bbbb.\n.rr...\n.rr...\n");
    picture.canvas.popClip();
    fill(picture.canvas, box(5, 2, 9, 9), kRed);
    EXPECT_EQ(picture.rows(), ".bbbb.\n.rr...\n.rr..r\n");
}

TEST(Canvas, ClipsHaveARuleAndATransform) {
    APath ring = box(0, 0, 3, 2);
    append(ring, {1, 0, 2, 1});
    Picture picture(6, 4);
    picture.canvas.pushClip(ring, AAffine::scaling(2), EFillRule::evenOdd);
    fill(picture.canvas, box(0, 0, 6, 4), kRed);
    EXPECT_EQ(picture.rows(), "rr..rr\nrr..rr\nrrrrrr\nrrrrrr\n");
}

TEST(Canvas, ClipBoundsAreTheReachablePixels) {
    Picture picture(6, 4);
    const auto bounds = [&] {
        const RECT rect = picture.canvas.clipBounds();
        return std::vector<long>{rect.left, rect.top, rect.right, rect.bottom};
    };
    EXPECT_EQ(bounds(), (std::vector<long>{0, 0, 6, 4}));
    picture.canvas.pushClip(box(1, -5, 5, 3), kAsIs, EFillRule::nonZero);
    EXPECT_EQ(bounds(), (std::vector<long>{1, 0, 5, 3}));
    picture.canvas.pushClip(box(2.25, 1.5, 80, 80), kAsIs, EFillRule::nonZero);
    EXPECT_EQ(bounds(), (std::vector<long>{2, 1, 5, 3}));
    picture.canvas.popClip();
    EXPECT_EQ(bounds(), (std::vector<long>{1, 0, 5, 3}));
    picture.canvas.pushClip(box(20, 20, 30, 30), kAsIs, EFillRule::nonZero);
    EXPECT_GE(bounds()[0], bounds()[2]);
    picture.canvas.popClip();
    picture.canvas.popClip();
    EXPECT_EQ(bounds(), (std::vector<long>{0, 0, 6, 4}));
}

TEST(Canvas, AClipWithoutAnOutlineCutsEverythingAway) {
    APath bad = box(0, 0, 6, 4);
    bad.lineTo({kNoNumber, 1});
    for (const APath& nothing : {APath(), bad}) {
        Picture picture(6, 4);
        picture.canvas.pushClip(nothing, kAsIs, EFillRule::nonZero);
        fill(picture.canvas, box(0, 0, 6, 4), kRed);
        EXPECT_EQ(picture.rows(), "......\n......\n......\n......\n");
        const RECT bounds = picture.canvas.clipBounds();
        EXPECT_TRUE(bounds.left >= bounds.right || bounds.top >= bounds.bottom);
        picture.canvas.popClip();
        fill(picture.canvas, box(0, 0, 6, 4), kRed);
        EXPECT_EQ(picture.rows(), "rrrrrr\nrrrrrr\nrrrrrr\nrrrrrr\n");
    }
}

TEST(Canvas, OneEndOfAClipTooManyIsHarmless) {
    Picture picture(2, 1);
    picture.canvas.popClip();
    fill(picture.canvas, box(0, 0, 2, 1), kRed);
    EXPECT_EQ(picture.rows(), "rr\n");
}

TEST(Canvas, WhatIsNotFiniteDrawsNothingAndHarmsNothing) {
    Picture picture(4, 2);
    ACanvas& canvas = picture.canvas;
    canvas.pushClip(box(0, 0, 3, 2), kAsIs, EFillRule::nonZero);
    for (double bad : {kInfinite, -kInfinite, kNoNumber}) {
        fill(canvas, box(0, 0, bad, 2), kRed);
        canvas.stroke(lines({{0, 1}, {bad, 1}}), kAsIs, kRed, wide(2));
        canvas.stroke(lines({{0, 1}, {4, 1}}), kAsIs, kRed, wide(bad));
        for (const AAffine& transform : {AAffine{bad, 0, 0, 1, 0, 0}, AAffine{1, 0, 0, 1, bad, 0}}) {
            canvas.fill(box(0, 0, 4, 2), transform, kRed, EFillRule::nonZero);
            canvas.stroke(box(0, 0, 4, 2), transform, kRed, wide(2));
            canvas.drawImage(imageOf("rr\nrr\n"), transform, 1, false);
        }
    }
    for (const AAffine& flat : {AAffine{0, 0, 0, 0, 0, 0}, AAffine{1, 1, 1, 1, 0, 0}}) {
        canvas.fill(box(0, 0, 4, 2), flat, kRed, EFillRule::nonZero);
        canvas.stroke(box(0, 0, 4, 2), flat, kRed, wide(2));
        canvas.drawImage(imageOf("rr\nrr\n"), flat, 1, false);
    }
    canvas.stroke(box(0, 0, 4, 2), kAsIs, kRed, wide(0));
    canvas.stroke(box(0, 0, 4, 2), kAsIs, kRed, wide(-1));
    fill(canvas, APath(), kRed);
    APath lone;
    lone.close();
    fill(canvas, lone, kRed);
    EXPECT_EQ(picture.rows(), "....\n....\n");
    fill(canvas, box(1, 0, 9, 1), kRed);
    EXPECT_EQ(picture.rows(), ".rr.\n....\n");
}

TEST(Canvas, FiguresFarLargerThanThePictureAreCutNotBent) {
    // A diagonal band and its halves, through the picture from farther than pixels are counted.
    for (double distance : {1e5, 1e7, 1e9, 1e12}) {
        Picture picture(6, 4);
        fill(picture.canvas, box(-distance, -distance, 3, distance), kRed);
        EXPECT_EQ(picture.rows(), "rrr...\nrrr...\nrrr...\nrrr...\n") << distance;
        APath around = box(-distance, -distance, distance, distance);
        append(around, {1, 1, 5, 3});
        picture.canvas.fill(around, kAsIs, kBlue, EFillRule::evenOdd);
        EXPECT_EQ(picture.rows(), "bbbbbb\nbrr..b\nbrr..b\nbbbbbb\n") << distance;
    }
}

TEST(Canvas, StrokesFarLongerThanThePictureAreCutNotBent) {
    for (double distance : {1e5, 1e7, 1e9}) {
        Picture picture(6, 4);
        picture.canvas.stroke(lines({{-distance, 2}, {distance, 2}}), kAsIs, kRed, wide(2));
        EXPECT_EQ(picture.rows(), "......\nrrrrrr\nrrrrrr\n......\n") << distance;
        Picture corner(6, 4);
        corner.canvas.stroke(box(1, 1, distance, distance), kAsIs, kRed, wide(2));
        EXPECT_EQ(corner.rows(), "rrrrrr\nrrrrrr\nrr....\nrr....\n") << distance;
    }
}

TEST(Canvas, DashesOfFarLongerLinesKeepTheirPlaces) {
    AStrokeStyle style = wide(2);
    style.dashes = {2, 1};
    for (double distance : {3e3, 3e5, 3e7}) {
        Picture picture(7, 2);
        picture.canvas.stroke(lines({{-distance, 1}, {distance, 1}}), kAsIs, kRed, style);
        EXPECT_EQ(picture.rows(), "rr.rr.r\nrr.rr.r\n") << distance;
    }
}

TEST(Canvas, ManyMoreDashesThanPixelsEndSoon) {
    AStrokeStyle style = wide(2);
    style.dashes = {1e-7, 1e-7};
    Picture picture(7, 2);
    picture.canvas.stroke(lines({{-1e9, 1}, {1e9, 1}}), kAsIs, kRed, style);
    EXPECT_GT(alphaOf(picture.at(3, 0)), 0);
}

TEST(Canvas, ANearlyFlatTransformPacksDashesIntoALine) {
    AStrokeStyle style = wide(1);
    style.dashes = {1, 1};
    style.cap = ELineCap::square;
    Picture picture(4, 2);
    picture.canvas.stroke(lines({{0, 0}, {4, 1e6}, {0, 3e6}}), AAffine{1, 0.3, 0, 1e-10, 0, 0}, kRed, style);
    fill(picture.canvas, box(0, 0, 4, 2), kBlue);
    EXPECT_EQ(picture.rows(), "bbbb\nbbbb\n");
}

TEST(Canvas, HugePensAndHugeTransformsLeaveItUsable) {
    Picture picture(2, 1);
    ACanvas& canvas = picture.canvas;
    const APath path = lines({{0, 0}, {1e300, 1e300}, {-1e300, 5}});
    for (double size : {1e6, 1e12, 1e40, 1e300, 1e-40, 1e-300}) {
        canvas.fill(path, AAffine::scaling(size), {AColor(RGB(0, 0, 0), 0)}, EFillRule::nonZero);
        canvas.stroke(lines({{50, 50}, {60, 60}}), AAffine::scaling(size), kRed, wide(1));
        canvas.stroke(lines({{5e3, 5e3}, {6e3, 5e3}}), kAsIs, {AColor(RGB(0, 0, 0), 0)}, wide(size));
        AStrokeStyle style = wide(1);
        style.miterLimit = size;
        style.dashOffset = size;
        style.dashes = {size, 1 / size};
        canvas.stroke(lines({{50, 50}, {60, 60}, {50, 50.001}}), kAsIs, kRed, style);
        canvas.pushClip(box(0, 0, 1, 1), AAffine::scaling(size), EFillRule::nonZero);
        canvas.popClip();
    }
    fill(canvas, box(0, 0, 2, 1), kBlue);
    EXPECT_EQ(picture.rows(), "bb\n");
}

// A text of thousands of letters is such an outline.
TEST(Canvas, OfManyFiguresThoseBesideThePictureChangeNothing) {
    APath few, many;
    for (int i = -400; i < 400; ++i) {
        const AFRect figure{i * 3.0, 1, i * 3 + 2.0, 3};
        append(many, figure);
        append(many, {figure.left, figure.top + 4 * (i % 5), figure.right, figure.bottom + 4 * (i % 5)});
        if (i < -5 || i > 5) continue;
        append(few, figure);
        append(few, {figure.left, figure.top + 4 * (i % 5), figure.right, figure.bottom + 4 * (i % 5)});
    }
    for (const AAffine& transform : {kAsIs, AAffine{0.9, 0.3, -0.3, 0.9, 1, 0.5}}) {
        for (const EFillRule rule : {EFillRule::nonZero, EFillRule::evenOdd}) {
            Picture one(9, 8), other(9, 8);
            one.canvas.fill(many, transform, kRed, rule);
            other.canvas.fill(few, transform, kRed, rule);
            EXPECT_EQ(one.rows(), other.rows());
            EXPECT_NE(one.rows().find('r'), std::string::npos);
        }
    }
    Picture one(9, 8), other(9, 8);
    AStrokeStyle style = wide(2);
    style.dashes = {3, 1};
    one.canvas.stroke(many, kAsIs, kBlue, style);
    other.canvas.stroke(few, kAsIs, kBlue, style);
    EXPECT_EQ(one.rows(), other.rows());
    EXPECT_NE(one.rows().find('b'), std::string::npos);
}

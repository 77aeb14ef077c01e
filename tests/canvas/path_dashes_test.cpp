#include "canvas/path_dashes.h"

#include <gtest/gtest.h>

#include <cmath>
#include <sstream>

namespace {

APath lines(std::initializer_list<AFPoint> points, bool closed = false) {
    APath path;
    for (AFPoint point : points) path.empty() ? path.moveTo(point) : path.lineTo(point);
    if (closed) path.close();
    return path;
}

// "0,0 4,0 | 6,0 10,0": figures of lines, closed ones with a z behind them.
std::string shown(const APath& path) {
    std::ostringstream text;
    const AFPoint* point = path.points().data();
    for (APath::EVerb verb : path.verbs()) {
        if (verb == APath::EVerb::close) {
            text << " z";
            continue;
        }
        if (text.tellp() > 0) text << (verb == APath::EVerb::move ? " | " : " ");
        text << point->x << ',' << point->y;
        ++point;
    }
    return text.str();
}

std::string dashed(const APath& path, const std::vector<double>& dashes, double offset = 0,
                   double dot = 0.5) {
    return shown(dashedPath(path, dashes, offset, 0.1, dot));
}

}  // namespace

TEST(PathDashes, DashesAndGapsTakeTurns) {
    EXPECT_EQ(dashed(lines({{0, 0}, {10, 0}}), {4, 2}), "0,0 4,0 | 6,0 10,0");
    EXPECT_EQ(dashed(lines({{0, 0}, {10, 0}}), {3}), "0,0 3,0 | 6,0 9,0");
    EXPECT_EQ(dashed(lines({{0, 0}, {10, 0}}), {1, 2, 3}), "0,0 1,0 | 3,0 6,0 | 7,0 9,0");
}

TEST(PathDashes, TheOffsetStartsWithinTheList) {
    EXPECT_EQ(dashed(lines({{0, 0}, {10, 0}}), {4, 2}, 1), "0,0 3,0 | 5,0 9,0");
    EXPECT_EQ(dashed(lines({{0, 0}, {10, 0}}), {4, 2}, 5), "1,0 5,0 | 7,0 10,0");
    EXPECT_EQ(dashed(lines({{0, 0}, {10, 0}}), {4, 2}, -1), "1,0 5,0 | 7,0 10,0");
}

TEST(PathDashes, DashesGoRoundCornersAndStartAnewWithEveryFigure) {
    EXPECT_EQ(dashed(lines({{0, 0}, {3, 0}, {3, 3}}), {4, 2}), "0,0 3,0 3,1");
    APath two = lines({{0, 0}, {3, 0}});
    two.moveTo({0, 9});
    two.lineTo({3, 9});
    EXPECT_EQ(dashed(two, {2, 5}), "0,0 2,0 | 0,9 2,9");
}

TEST(PathDashes, AClosedFigureEndsInTheDashItStartsWith) {
    const APath square = lines({{0, 0}, {4, 0}, {4, 4}, {0, 4}}, true);
    EXPECT_EQ(dashed(square, {7, 3}), "2,4 0,4 0,0 4,0 4,3");
    EXPECT_EQ(dashed(square, {100, 1}), "0,0 4,0 4,4 0,4 0,0 z");
}

TEST(PathDashes, DashesOfNoLengthAreDotsAlongTheLine) {
    EXPECT_EQ(dashed(lines({{0, 0}, {0, 6}}), {0, 4}), "0,0 0,0.5 | 0,4 0,4.5");
    EXPECT_EQ(dashed(lines({{0, 0}, {0, 6}}), {0, 4}, 0, 0), "");
}

TEST(PathDashes, DotsAreDrawnOut) {
    APath path = lines({{1, 1}, {1, 1}});
    path.moveTo({5, 5});
    path.moveTo({2, 2});
    path.close();
    path.moveTo({0, 0});
    path.lineTo({3, 0});
    EXPECT_EQ(shown(withDrawnDots(path, 0.5)), "1,1 1.5,1 | 2,2 2.5,2 | 0,0 3,0");
    EXPECT_EQ(shown(withDrawnDots(path, 0)), "0,0 3,0");
    EXPECT_EQ(dashed(lines({{1, 1}, {1, 1}}), {4, 2}), "1,1 1.5,1");
    EXPECT_EQ(dashed(lines({{1, 1}, {1, 1}}), {4, 2}, 5), "");
}

TEST(PathDashes, CurvesBecomeLinesThatKeepClose) {
    APath quarter;
    const double control = 0.5522847498 * 10;
    quarter.moveTo({10, 0});
    quarter.curveTo({10, control}, {control, 10}, {0, 10});
    const APath dashes = dashedPath(quarter, {1, 1}, 0, 0.01, 0.1);
    EXPECT_GT(dashes.points().size(), 16u);
    for (AFPoint p : dashes.points()) EXPECT_NEAR(std::hypot(p.x, p.y), 10, 0.02);
}

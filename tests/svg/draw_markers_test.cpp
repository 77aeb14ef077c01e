#include <string>

#include "svg/picture.h"
#include "svg/support.h"

namespace svg_test {

namespace {

// A marker 10 user units large with its reference point in the middle; its right half is red.
std::string marker(const std::string& id, const std::string& more) {
    return "<marker id='" + id +
           "' markerWidth='10' markerHeight='10' refX='5' refY='5'"
           " markerUnits='userSpaceOnUse' " +
           more +
           "><rect width='10' height='10' fill='blue'/><rect x='5' width='5' height='10' "
           "fill='red'/></marker>";
}

}  // namespace

TEST(DrawMarkers, TheyStandAtTheStartTheVerticesAndTheEnd) {
    const Picture picture =
        drawBody(marker("m", "") +
                 "<path d='M20 20H60V60H20' fill='none' marker-mid='url(#m)' marker-end='url(#m)'/>");
    EXPECT_COLOR(picture, 22, 17, 0xffffff);  // no start marker
    for (const auto& [x, y] : {std::pair(60, 20), std::pair(60, 60), std::pair(20, 60)}) {
        EXPECT_COLOR(picture, x - 3, y, 0x0000ff);
        EXPECT_COLOR(picture, x + 3, y, 0xff0000);
        EXPECT_COLOR(picture, x + 6, y, 0xffffff);
    }
}

TEST(DrawMarkers, AutoTurnsThemAlongThePath) {
    const Picture picture = drawBody(marker("m", "orient='auto'") +
                                     "<path d='M20 20V60' fill='none' marker-start='url(#m)'"
                                     " marker-end='url(#m)'/>");
    for (const int y : {20, 60}) {
        EXPECT_COLOR(picture, 20, y - 3, 0x0000ff);
        EXPECT_COLOR(picture, 20, y + 3, 0xff0000);
    }
}

TEST(DrawMarkers, TheStartMarkerCanBeReversed) {
    const Picture picture = drawBody(marker("m", "orient='auto-start-reverse'") +
                                     "<path d='M20 20H60' fill='none' marker-start='url(#m)'"
                                     " marker-end='url(#m)'/>");
    EXPECT_COLOR(picture, 17, 20, 0xff0000);
    EXPECT_COLOR(picture, 23, 20, 0x0000ff);
    EXPECT_COLOR(picture, 63, 20, 0xff0000);
}

TEST(DrawMarkers, AnAngleTurnsThemClockwise) {
    const Picture picture =
        drawBody(marker("m", "orient='90'") + "<path d='M20 20H60' fill='none' marker-start='url(#m)'/>");
    EXPECT_COLOR(picture, 20, 23, 0xff0000);
    EXPECT_COLOR(picture, 20, 17, 0x0000ff);
}

TEST(DrawMarkers, UsuallyTheyGrowWithTheStroke) {
    const Picture picture = drawBody(
        "<marker id='m' markerWidth='4' markerHeight='4' refX='2' refY='2'><rect width='4' height='4'/>"
        "</marker><path d='M50 50H90' fill='none' stroke-width='5' marker-start='url(#m)'/>");
    EXPECT_COLOR(picture, 41, 41, 0x000000);
    EXPECT_COLOR(picture, 59, 59, 0x000000);
    EXPECT_COLOR(picture, 61, 50, 0xffffff);
}

TEST(DrawMarkers, AnArcHasNoVerticesBetweenItsEnds) {
    const Picture picture =
        drawBody(marker("m", "") + "<path d='M40 80A30 30 0 0 1 100 80' fill='none' marker-mid='url(#m)'/>");
    EXPECT_COLOR(picture, 70, 50, 0xffffff);
}

TEST(DrawMarkers, TheyAreCutToTheirFrameUnlessTheyMayLeaveIt) {
    const auto drawn = [](const std::string& more) {
        return drawBody("<marker id='m' markerWidth='10' markerHeight='10' markerUnits='userSpaceOnUse' " +
                        more +
                        "><rect width='30' height='10'/></marker>"
                        "<path d='M20 20H90' fill='none' marker-start='url(#m)'/>");
    };
    EXPECT_COLOR(drawn(""), 28, 25, 0x000000);
    EXPECT_COLOR(drawn(""), 35, 25, 0xffffff);
    EXPECT_COLOR(drawn("overflow='visible'"), 35, 25, 0x000000);
}

TEST(DrawMarkers, AViewBoxIsFittedIntoTheFrame) {
    const Picture picture = drawBody(
        "<marker id='m' markerWidth='20' markerHeight='20' viewBox='0 0 2 2' refX='1' refY='1'"
        " markerUnits='userSpaceOnUse'><rect width='1' height='2' fill='red'/></marker>"
        "<path d='M50 50H90' fill='none' marker-start='url(#m)'/>");
    EXPECT_COLOR(picture, 41, 41, 0xff0000);
    EXPECT_COLOR(picture, 49, 59, 0xff0000);
    EXPECT_COLOR(picture, 51, 50, 0xffffff);
}

TEST(DrawMarkers, AMarkerWithinItselfIsDrawnOnce) {
    const Picture picture = drawBody(
        "<marker id='m' markerWidth='10' markerHeight='10' markerUnits='userSpaceOnUse'>"
        "<path d='M0 0H10V10H0z' fill='red' marker-start='url(#m)'/></marker>"
        "<path d='M20 20H90' fill='none' marker-start='url(#m)'/>");
    EXPECT_COLOR(picture, 25, 25, 0xff0000);
}

TEST(DrawMarkers, ManyVerticesAndHostileNumbersAreBounded) {
    std::string path = "M0 0";
    for (int i = 0; i < 20000; ++i) path += "l1e9 1e-9 0 0-1e9 0";
    const Picture picture = drawBody(marker("m", "orient='auto'") + "<path d='" + path +
                                     "' fill='none' marker-mid='url(#m)'/>"
                                     "<marker id='n' markerWidth='1e30' markerHeight='1e30' refX='1e30'"
                                     " orient='1e30'><rect width='1'/></marker>"
                                     "<path d='M1e30 0L0 1e30' stroke-width='1e30' marker-end='url(#n)'/>"
                                     "<rect x='100' y='50' width='10' height='10' fill='red'/>");
    EXPECT_COLOR(picture, 105, 55, 0xff0000);
}

constexpr char kArrowHead[] =
    "<marker id='m' markerUnits='userSpaceOnUse' markerWidth='20' markerHeight='20' refX='10' refY='10'>"
    "<rect width='20' height='20' fill='context-stroke'/><rect x='6' y='6' width='8' height='8' "
    "fill='context-fill'/>"
    "</marker>";

TEST(DrawContextPaint, MarkersTakeThePaintsOfTheirShape) {
    const Picture picture = drawBody(std::string(kArrowHead) +
                                     "<path d='M50 50H150' fill='lime' stroke='blue' marker-start='url(#m)'/>"
                                     "<path d='M50 80H150' fill='none' stroke='red' marker-end='url(#m)'/>");
    EXPECT_COLOR(picture, 50, 50, kLime);
    EXPECT_COLOR(picture, 42, 42, kBlue);
    EXPECT_COLOR(picture, 150, 80, kRed);
}

TEST(DrawContextPaint, AGradientGoesOnFromMarkerToMarker) {
    const Picture picture = drawBody(
        "<linearGradient id='g' gradientUnits='userSpaceOnUse' x1='99' x2='101'><stop stop-color='red'/>"
        "<stop offset='1' stop-color='blue'/></linearGradient>" +
        std::string(kArrowHead) +
        "<path d='M50 50H150' stroke='url(#g)' marker-start='url(#m)' marker-end='url(#m)' opacity='0.99'/>");
    EXPECT_TRUE(hasColor(picture, 42, 42, 0xff0303, 4));
    EXPECT_TRUE(hasColor(picture, 158, 58, 0x0303ff, 4));
}

TEST(DrawContextPaint, UsesLendTheirPaintsToWhatTheyRepeat) {
    const auto document = readBody(
        "<defs><g id='a'><rect id='r' width='40' height='40' fill='context-fill' stroke='context-stroke' "
        "stroke-width='20'/></g><g id='b'><use href='#a' fill='context-stroke'/></g></defs>"
        "<use href='#a' x='20' y='20' fill='lime' stroke='blue'/><use href='#b' x='120' y='20' "
        "stroke='red'/>");
    const Picture picture(*document);
    EXPECT_COLOR(picture, 40, 40, kLime);
    EXPECT_COLOR(picture, 15, 40, kBlue);
    EXPECT_COLOR(picture, 140, 40, kRed);
}

TEST(DrawContextPaint, IsNothingWithoutAContext) {
    EXPECT_COLOR(drawBody("<g fill='red'>" + box("fill='context-fill'") + "</g>"), 50, 50, kWhite);
}

TEST(DrawMarkers, HaveEffectsOfTheirOwn) {
    const Picture picture = drawBody(
        "<marker id='m' opacity='0.5' markerUnits='userSpaceOnUse' markerWidth='20' markerHeight='20'>"
        "<rect width='20' height='20' fill='red'/></marker><path d='M50 50H150' marker-start='url(#m)'/>");
    EXPECT_COLOR(picture, 60, 60, 0xff8080);
}

}  // namespace svg_test

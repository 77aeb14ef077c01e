// Gradients.
#include "picture.h"
#include "support.h"

namespace {

using namespace svg_test;

const std::string kStops = "<stop offset='0' stop-color='black'/><stop offset='1' stop-color='white'/>";

// A rectangle over the picture's upper half painted with the gradient "g".
Picture painted(const std::string& definitions) {
    return drawBody("<defs>" + definitions +
                    "</defs><rect width='200' height='50' fill='url(#g)' stroke='none'/>");
}

int gray(const Picture& picture, int x, int y = 25) {
    return static_cast<int>(picture.at(x, y) & 0xff);
}

TEST(DrawGradients, LinearRunsFromLeftToRightOverTheBox) {
    const Picture picture = painted("<linearGradient id='g'>" + kStops + "</linearGradient>");
    EXPECT_NEAR(gray(picture, 0), 0, 3);
    EXPECT_NEAR(gray(picture, 100), 128, 3);
    EXPECT_NEAR(gray(picture, 199), 255, 3);
}

TEST(DrawGradients, UserSpaceAndTransform) {
    const Picture picture = painted(
        "<linearGradient id='g' gradientUnits='userSpaceOnUse' x1='0' x2='10' "
        "gradientTransform='translate(100) scale(10)'>" +
        kStops + "</linearGradient>");
    EXPECT_NEAR(gray(picture, 50), 0, 3);
    EXPECT_NEAR(gray(picture, 150), 128, 3);
}

TEST(DrawGradients, PercentagesInUserSpaceAreOfTheViewport) {
    const Picture picture =
        painted("<linearGradient id='g' gradientUnits='userSpaceOnUse' x1='50%' x2='100%'>" + kStops +
                "</linearGradient>");
    EXPECT_NEAR(gray(picture, 99), 0, 3);
    EXPECT_NEAR(gray(picture, 150), 128, 3);
}

TEST(DrawGradients, Spread) {
    const std::string half = "<linearGradient id='g' x2='50%' spreadMethod='";
    EXPECT_NEAR(gray(painted(half + "pad'>" + kStops + "</linearGradient>"), 150), 255, 3);
    EXPECT_NEAR(gray(painted(half + "reflect'>" + kStops + "</linearGradient>"), 150), 128, 3);
    EXPECT_NEAR(gray(painted(half + "reflect'>" + kStops + "</linearGradient>"), 190), 26, 4);
    EXPECT_NEAR(gray(painted(half + "repeat'>" + kStops + "</linearGradient>"), 190), 230, 4);
}

TEST(DrawGradients, RepeatedOnesBeginAnewAtOnce) {
    const Picture picture = painted(
        "<linearGradient id='g' x2='.5' spreadMethod='repeat'><stop offset='.2' stop-color='black'/>"
        "<stop offset='.4' stop-color='white'/></linearGradient>");
    for (const int start : {0, 100}) {
        EXPECT_EQ(gray(picture, start + 2), 0);
        EXPECT_EQ(gray(picture, start + 60), 255);
        EXPECT_EQ(gray(picture, start + 97), 255);
    }
}

TEST(DrawGradients, WhatIsNotSaidComesFromTheReferredGradient) {
    const Picture picture = painted("<linearGradient id='a' x1='1' x2='0'>" + kStops +
                                    "</linearGradient><linearGradient id='b' xlink:href='#a'/>"
                                    "<linearGradient id='g' href='#b' y2='0'/>");
    EXPECT_NEAR(gray(picture, 0), 255, 3);
    EXPECT_NEAR(gray(picture, 199), 0, 3);
}

TEST(DrawGradients, RadialHasACenterAndARadius) {
    const Picture picture = painted(
        "<radialGradient id='g' gradientUnits='userSpaceOnUse' cx='100' cy='25' "
        "r='80'>" +
        kStops + "</radialGradient>");
    EXPECT_NEAR(gray(picture, 100), 0, 6);
    EXPECT_NEAR(gray(picture, 140), 128, 6);
    EXPECT_NEAR(gray(picture, 60), 128, 6);
    EXPECT_NEAR(gray(picture, 190), 255, 3);
}

TEST(DrawGradients, FocusMovesTheFirstStop) {
    const Picture picture = painted(
        "<radialGradient id='g' gradientUnits='userSpaceOnUse' cx='100' cy='25' "
        "r='80' fx='60'>" +
        kStops + "</radialGradient>");
    EXPECT_NEAR(gray(picture, 60), 0, 6);
    EXPECT_NEAR(gray(picture, 120), 128, 6);
}

TEST(DrawGradients, StopsTakeStylesAndOpacity) {
    const Picture picture = painted(
        "<style>.s{stop-color:red;stop-opacity:.5}</style><linearGradient id='g'>"
        "<stop class='s'/><stop offset='1' style='stop-color:red;stop-opacity:0'/>"
        "</linearGradient>");
    EXPECT_COLOR(picture, 0, 25, 0xff8080);
    EXPECT_COLOR(picture, 199, 25, 0xffffff);
}

TEST(DrawGradients, OffsetsNeverFall) {
    const Picture picture = painted(
        "<linearGradient id='g'><stop offset='.5' stop-color='black'/>"
        "<stop offset='.2' stop-color='white'/></linearGradient>");
    EXPECT_NEAR(gray(picture, 90), 0, 3);
    EXPECT_NEAR(gray(picture, 110), 255, 3);
}

TEST(DrawGradients, OneStopIsAColourWithItsOpacity) {
    EXPECT_COLOR(
        painted("<linearGradient id='g'><stop stop-color='red' stop-opacity='.5'/></linearGradient>"), 100,
        25, 0xff8080);
}

TEST(DrawGradients, NothingToPaintWithPaintsNothing) {
    EXPECT_EQ(painted("<linearGradient id='g'/>").at(100, 25), kWhite);
    EXPECT_EQ(painted("").at(100, 25), kWhite);
    // A line has no box to measure a gradient in.
    EXPECT_EQ(drawBody("<linearGradient id='g'>" + kStops +
                       "</linearGradient><path d='M0 20H90' stroke='url(#g)' stroke-width='9'/>"),
              drawBody(""));
}

TEST(DrawGradients, StrokesTakeThem) {
    const Picture picture =
        drawBody("<linearGradient id='g'>" + kStops +
                 "</linearGradient><rect x='10' y='10' width='100' height='60' fill='none' "
                 "stroke='url(#g)' stroke-width='10'/>");
    EXPECT_NEAR(gray(picture, 60, 10), 128, 4);
    EXPECT_EQ(picture.at(60, 40), kWhite);
}

TEST(DrawGradients, FallbackServesWhereThereIsNoGradient) {
    EXPECT_EQ(drawBody("<rect width='20' height='20' fill='url(#none) red'/>").at(10, 10), 0xff0000U);
}

TEST(DrawGradients, StopsFloodsAndOffsetsTakeOnlyWhatTheyKnow) {
    const auto stops = [](const std::string& first) {
        return drawBody("<linearGradient id='g'><stop " + first + "/><stop offset='1' stop-color='red'/>" +
                        "</linearGradient>" + box("fill='url(#g)'"));
    };
    EXPECT_COLOR(stops("stop-color='url(#x)'"), 21, 50, 0x020000);
    EXPECT_COLOR(stops("stop-color='none'"), 21, 50, 0x020000);
    // A length is no offset.
    EXPECT_COLOR(stops("offset='1px' stop-color='blue'"), 21, 50, 0x0200fc);
}

TEST(DrawGradients, AFocusOutsideItsCircleMakesACone) {
    const Picture picture = drawBody(
        "<radialGradient id='g' gradientUnits='userSpaceOnUse' cx='60' cy='50' r='20' fx='160'>"
        "<stop stop-color='blue'/><stop offset='1' stop-color='red'/></radialGradient>"
        "<rect width='200' height='100' fill='url(#g)'/>");
    EXPECT_COLOR(picture, 190, 50, kWhite);
    EXPECT_COLOR(picture, 20, 50, kRed);
    EXPECT_COLOR(picture, 160, 90, kWhite);
}

TEST(DrawGradients, EqualCirclesOfAGradientShowItsEnds) {
    const Picture picture = drawBody(
        "<radialGradient id='g' fr='0.5'><stop stop-color='blue'/>"
        "<stop offset='1' stop-color='red'/></radialGradient>" +
        box("fill='url(#g)'"));
    EXPECT_COLOR(picture, 70, 50, kBlue);
    EXPECT_COLOR(picture, 22, 12, kRed);
}

}  // namespace

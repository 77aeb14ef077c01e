// Transforms of attributes and style sheets.
#include "picture.h"
#include "support.h"

namespace {

using namespace svg_test;

TEST(DrawTransforms, ATransformThatEndsWithACommaIsNone) {
    EXPECT_COLOR(drawBody(box("transform='translate(60,0,)' fill='red'")), 30, 50, kRed);
    EXPECT_COLOR(drawBody(box("transform='translate(60,0)' fill='red'")), 30, 50, kWhite);
}

TEST(DrawTransforms, OfStyleSheetsHaveUnits) {
    const auto moved = [](const std::string& transform) {
        return drawBody("<rect width='20' height='20' fill='red' style='transform:" + transform + "'/>");
    };
    EXPECT_COLOR(moved("translate(100px,50%)"), 110, 60, kRed);
    EXPECT_COLOR(moved("translateX(100px) scaleY(4)"), 110, 70, kRed);
    EXPECT_COLOR(moved("translate(50px, 50px) rotate(0.5turn)"), 40, 40, kRed);
    EXPECT_COLOR(moved("matrix(1,0,0,1,100,0)"), 110, 10, kRed);
    EXPECT_COLOR(moved("scale(400%)"), 70, 70, kRed);
    EXPECT_COLOR(moved("skew(45deg)"), 30, 18, kRed);
    // Without units, or without a comma, it is none.
    EXPECT_COLOR(moved("translate(100 0)"), 10, 10, kRed);
    EXPECT_COLOR(moved("rotate(90)"), 10, 10, kRed);
}

TEST(DrawTransforms, OfStyleSheetsComeBeforeThoseOfAttributes) {
    const std::string rest = "<rect width='20' height='20' fill='red' transform='translate(100)' ";
    EXPECT_COLOR(drawBody(rest + "style='transform:none'/>"), 10, 10, kRed);
    EXPECT_COLOR(drawBody(rest + "style='transform:foo'/>"), 110, 10, kRed);
    EXPECT_COLOR(
        drawBody(
            "<style>g{transform:translate(50px)}</style><g><rect width='20' height='20' fill='red'/></g>"),
        60, 10, kRed);
}

TEST(DrawTransforms, TurnAboutTheirOrigin) {
    const auto turned = [](const std::string& origin) {
        return drawBody("<rect x='100' y='40' width='60' height='20' fill='red' transform='rotate(180)' " +
                        origin + "/>");
    };
    EXPECT_COLOR(turned("transform-origin='100 50'"), 50, 50, kRed);
    EXPECT_COLOR(turned("transform-origin='center'"), 50, 50, kRed);
    EXPECT_COLOR(turned("transform-origin='50% 50%'"), 50, 50, kRed);
    EXPECT_COLOR(turned("transform-origin='right bottom'"), 290 - 200, 50, kWhite);
    EXPECT_COLOR(turned("style='transform-box:fill-box;transform-origin:left'"), 50, 50, kRed);
    EXPECT_COLOR(turned("style='transform-box:fill-box;transform-origin:center'"), 150, 50, kRed);
}

TEST(DrawTransforms, MayStandInPropertiesOfTheirOwn) {
    const auto moved = [](const std::string& style) {
        return drawBody("<rect width='20' height='20' fill='red' style='" + style + "'/>");
    };
    EXPECT_COLOR(moved("translate:100px 50%"), 110, 60, kRed);
    EXPECT_COLOR(moved("translate:100px"), 110, 10, kRed);
    EXPECT_COLOR(moved("scale:3"), 50, 50, kRed);
    EXPECT_COLOR(moved("scale:400% 1"), 70, 10, kRed);
    EXPECT_COLOR(moved("rotate:180deg;translate:60px 60px"), 50, 50, kRed);
    // From outside: translate, rotate, scale, transform.
    EXPECT_COLOR(moved("transform:translate(10px,0);scale:2;rotate:90deg;translate:100px"), 90, 30, kRed);
    EXPECT_COLOR(moved("translate:none;translate:50"), 10, 10, kRed);
    EXPECT_COLOR(moved("rotate:x 45deg"), 10, 10, kRed);
    const auto document = readBody("<rect id='a' width='20' height='20' style='translate:30px'/>");
    EXPECT_DOUBLE_EQ(boundsOf(*document, "a").left, 30);
}

TEST(DrawTransforms, OfAGroupTurnAboutItsOwnBox) {
    const Picture picture = drawBody(
        "<g style='transform-box:fill-box;transform-origin:center;transform:rotate(180deg)'>"
        "<rect width='20' height='20' fill='red'/><rect x='180' y='80' width='20' height='20' "
        "fill='blue'/></g>");
    EXPECT_COLOR(picture, 10, 10, kBlue);
    EXPECT_COLOR(picture, 190, 90, kRed);
}

TEST(DrawTransforms, BoxesInBoxesWithoutEndAreDrawnQuickly) {
    std::string body;
    for (int i = 0; i < 200; ++i) body += "<g style='transform-box:fill-box;transform:translate(1%)'>";
    body += "<rect width='20' height='20' fill='red'/>";
    for (int i = 0; i < 200; ++i) body += "</g>";
    EXPECT_COLOR(drawBody(body), 10, 10, kRed);
}

TEST(DrawTransforms, PlaceObjectsOfTheModelToo) {
    const auto document = readBody(
        "<g style='transform:translate(100px)'><rect id='a' x='1' width='10' height='10'/>"
        "<path id='b' d='M2 0h10v10z' style='transform:translateY(50px)'/></g>");
    const AFRect a = boundsOf(*document, "a");
    EXPECT_DOUBLE_EQ(a.left, 101);
    const AFRect b = boundsOf(*document, "b");
    EXPECT_DOUBLE_EQ(b.left, 102);
    EXPECT_DOUBLE_EQ(b.top, 50);
}

}  // namespace

// The outlines of shapes, as pixels.
#include "picture.h"
#include "support.h"

namespace {

using namespace svg_test;

TEST(DrawShapes, RectangleFillsItsPixelsExactly) {
    const Picture picture = drawBody("<rect x='10' y='20' width='30' height='40' fill='red'/>");
    EXPECT_EQ(picture.at(10, 20), kRed);
    EXPECT_EQ(picture.at(39, 59), kRed);
    EXPECT_EQ(picture.at(9, 20), kWhite);
    EXPECT_EQ(picture.at(40, 59), kWhite);
    EXPECT_EQ(picture.at(39, 60), kWhite);
}

TEST(DrawShapes, RoundCornersAreLeftOut) {
    const Picture picture = drawBody("<rect x='10' y='10' width='60' height='60' rx='30' fill='red'/>");
    EXPECT_EQ(picture.at(40, 11), kRed);
    EXPECT_EQ(picture.at(14, 14), kWhite);
    EXPECT_EQ(picture.at(65, 65), kWhite);
}

TEST(DrawShapes, OneRadiusServesBothDirectionsAndIsCutToHalfTheSides) {
    const Picture picture = drawBody("<rect width='40' height='80' ry='1000' fill='red'/>");
    EXPECT_EQ(picture.at(20, 40), kRed);
    EXPECT_EQ(picture.at(2, 2), kWhite);
    EXPECT_EQ(picture.at(2, 40), kRed);
}

TEST(DrawShapes, RectangleWithoutASizeIsNotDrawn) {
    EXPECT_EQ(drawBody("<rect width='0' height='50' stroke='red'/><rect width='9' stroke='red'/>"
                       "<rect width='-5' height='5' fill='red'/>"),
              drawBody(""));
}

TEST(DrawShapes, CircleAndEllipse) {
    const Picture picture = drawBody(
        "<circle cx='30' cy='30' r='20' fill='red'/>"
        "<ellipse cx='120' cy='50' rx='40' ry='10' fill='red'/>");
    EXPECT_EQ(picture.at(30, 30), kRed);
    EXPECT_EQ(picture.at(30, 12), kRed);
    EXPECT_EQ(picture.at(14, 14), kWhite);
    EXPECT_EQ(picture.at(82, 50), kRed);
    EXPECT_EQ(picture.at(120, 38), kWhite);
    EXPECT_EQ(picture.at(157, 57), kWhite);
}

TEST(DrawShapes, LineHasNoArea) {
    const Picture picture =
        drawBody("<line x1='10' y1='20' x2='50' y2='20' stroke='red' stroke-width='4' fill='blue'/>");
    EXPECT_EQ(picture.at(10, 18), kRed);
    EXPECT_EQ(picture.at(49, 21), kRed);
    EXPECT_EQ(picture.at(30, 22), kWhite);
    EXPECT_EQ(picture.at(50, 20), kWhite);
}

TEST(DrawShapes, PolygonIsClosedAndPolylineIsNot) {
    const std::string points =
        " points='10,10 50,10 50,50 10,50' fill='none' stroke='red' stroke-width='2'/>";
    EXPECT_EQ(drawBody("<polygon" + points).at(10, 30), kRed);
    EXPECT_EQ(drawBody("<polyline" + points).at(10, 30), kWhite);
    EXPECT_EQ(drawBody("<polyline" + points).at(49, 30), kRed);
}

TEST(DrawShapes, PathTakesEveryCommand) {
    const Picture picture = drawBody(
        "<path fill='red' d='M10 10H30V30H10z m40 0h20v20h-20z M90 10l20 0 0 20-20 0z"
        "M130 10C130 10 150 10 150 10S150 30 150 30Q150 30 130 30T130 10z'/>");
    for (const int x : {11, 28, 51, 68, 91, 108, 132, 148}) {
        EXPECT_EQ(picture.at(x, 12), kRed) << x;
        EXPECT_EQ(picture.at(x, 28), kRed) << x;
    }
    EXPECT_EQ(picture.at(40, 20), kWhite);
}

TEST(DrawShapes, ArcTakesTheWayThatItsFlagsSay) {
    const Picture large = drawBody("<path fill='red' d='M50 30A20 20 0 1 1 70 50z'/>");
    EXPECT_EQ(large.at(70, 14), kRed);
    EXPECT_EQ(large.at(86, 30), kRed);
    const Picture small = drawBody("<path fill='red' d='M50 30A20 20 0 0 0 70 50z'/>");
    EXPECT_EQ(small.at(70, 14), kWhite);
    EXPECT_EQ(small.at(57, 43), kRed);
    EXPECT_EQ(small.at(65, 35), kWhite);
}

TEST(DrawShapes, BrokenPathIsDrawnUpToTheBreak) {
    const Picture picture = drawBody("<path fill='red' d='M10 10H30V30H10z M50 10H70V30H50 L broken z'/>");
    EXPECT_EQ(picture.at(20, 20), kRed);
    EXPECT_EQ(picture.at(60, 20), kRed);
}

TEST(DrawShapes, SegmentBehindACloseStartsWhereTheFigureBegan) {
    const Picture picture = drawBody("<path fill='red' d='M10 10H30V30H10z L10 50H30z'/>");
    EXPECT_EQ(picture.at(12, 45), kRed);
    EXPECT_EQ(picture.at(28, 48), kRed);
    EXPECT_EQ(picture.at(28, 34), kWhite);
}

TEST(DrawShapes, TransformsMultiplyFromTheOutsideIn) {
    const Picture picture = drawBody(
        "<g transform='translate(10 20)'><g transform='scale(2)'>"
        "<rect width='10' height='10' transform='translate(5 0)' fill='red'/>"
        "</g></g>");
    EXPECT_EQ(picture.at(20, 20), kRed);
    EXPECT_EQ(picture.at(39, 39), kRed);
    EXPECT_EQ(picture.at(19, 20), kWhite);
    EXPECT_EQ(picture.at(40, 39), kWhite);
}

TEST(DrawShapes, PercentagesAreOfTheViewport) {
    const Picture picture = drawBody("<rect x='50%' y='50%' width='25%' height='25%' fill='red'/>");
    EXPECT_EQ(picture.at(100, 50), kRed);
    EXPECT_EQ(picture.at(149, 74), kRed);
    EXPECT_EQ(picture.at(150, 74), kWhite);
}

TEST(DrawShapes, LengthsMayBeCalculated) {
    const auto at = [](const std::string& attributes, int x, int y) {
        return drawBody("<rect height='100' fill='red' " + attributes + "/>").at(x, y) == kRed;
    };
    EXPECT_TRUE(at("width='calc(50% - 20px)'", 79, 5));
    EXPECT_FALSE(at("width='calc(50% - 20px)'", 80, 5));
    EXPECT_TRUE(at("x='calc((1px + 4px) * 2)' width='calc(100px/2)'", 59, 5));
    EXPECT_FALSE(at("x='calc((1px + 4px) * 2)' width='calc(100px/2)'", 60, 5));
    EXPECT_TRUE(at("width='min(30px, 50%)'", 29, 5));
    EXPECT_FALSE(at("width='min(30px, 50%)'", 30, 5));
    EXPECT_TRUE(at("width='max(30px, 50%, 1em)'", 99, 5));
    EXPECT_TRUE(at("width='clamp(10px, 90%, 40px)'", 39, 5));
    EXPECT_FALSE(at("width='clamp(10px, 90%, 40px)'", 40, 5));
    for (const char* const invalid :
         {"calc(10px", "calc(10px+5px)", "calc()", "calc(2 + 3px)", "calc(2px * 3px)", "calc(3 / 2px)",
          "clamp(1px, 2px)", "min()", "sin(3)", "calc(3foo)", "(3px)"})
        EXPECT_FALSE(at("width='" + std::string(invalid) + "'", 0, 0)) << invalid;
    const std::string deep(10000, '(');
    EXPECT_FALSE(at("width='calc" + deep + "1px" + std::string(10000, ')') + "'", 0, 0));
}

TEST(DrawShapes, ValuesOfStylesMayBeCalculated) {
    EXPECT_COLOR(drawBody(box("fill='red' fill-opacity='calc(1 / 2)'")), 50, 50, 0xff8080);
    EXPECT_COLOR(drawBody(box("stroke='red' style='stroke-width:calc(2 * 10px)'")), 12, 50, kRed);
    EXPECT_COLOR(
        drawBody(
            "<path d='M0 50H200' stroke='red' stroke-width='20' stroke-dasharray='calc(5px + 5px) 10'/>"),
        15, 50, kWhite);
    const Picture moved = drawBody(
        "<rect width='20' height='20' fill='red' style='transform:translate(calc(50% + 10px), "
        "0) rotate(calc(360deg / 4))'/>");
    EXPECT_COLOR(moved, 95, 10, kRed);
}

TEST(DrawShapes, StyleSheetsMayTellTheirGeometry) {
    const auto document = readBody(
        "<style>rect{x:20px;width:50%;height:40px} .c{r:10px;cy:90px} path{d:path(\"M180 0h20v20z\")} "
        ".n{width:30} .v{--w:10px;width:var(--w)}</style>"
        "<rect id='a' width='5' y='10' fill='red'/><circle id='b' class='c' cx='100' fill='red'/>"
        "<path id='c' d='M0 0' fill='red'/><rect id='d' class='n' fill='none'/><rect id='e' class='v' "
        "fill='none'/>");
    expectBounds(boundsOf(*document, "a"), {20, 10, 120, 50});
    expectBounds(boundsOf(*document, "b"), {90, 80, 110, 100});
    expectBounds(boundsOf(*document, "c"), {180, 0, 200, 20});
    expectBounds(boundsOf(*document, "d"), {20, 0, 120, 40});
    expectBounds(boundsOf(*document, "e"), {20, 0, 30, 40});
    const Picture picture(*document);
    EXPECT_COLOR(picture, 119, 49, kRed);
    EXPECT_COLOR(picture, 100, 90, kRed);
    EXPECT_COLOR(picture, 198, 5, kRed);
}

TEST(DrawShapes, TheRootsSizeMayStandInItsStyle) {
    const auto document = readText(
        "<svg xmlns='http://www.w3.org/2000/svg' style='width:48px;height:auto' viewBox='0 0 24 12'/>");
    EXPECT_DOUBLE_EQ(document->getPageScale(), 2);
}

TEST(DrawShapes, TheViewsTransformCounts) {
    const auto document = readBody("<rect x='10' y='10' width='10' height='10' fill='red'/>");
    const Picture picture(*document, AAffine::scaling(4) * AAffine::translation(-10, -10));
    EXPECT_EQ(picture.at(0, 0), kRed);
    EXPECT_EQ(picture.at(39, 39), kRed);
    EXPECT_EQ(picture.at(40, 39), kWhite);
}

}  // namespace

// Properties of fills and strokes, and where they come from.
#include "picture.h"
#include "support.h"

namespace {

using namespace svg_test;

// The colour of a square of 20 by 20 with this markup.
std::uint32_t squareColor(const std::string& attributes, const std::string& before = "") {
    return drawBody(before + "<rect id='a' class='c' width='20' height='20' " + attributes + "/>").at(10, 10);
}

TEST(Style, OpacitiesMix) {
    const std::string rect = "<rect width='20' height='20' fill='red' ";
    EXPECT_COLOR(drawBody(rect + "fill-opacity='.5'/>"), 10, 10, 0xff8080);
    EXPECT_COLOR(drawBody(rect + "opacity='50%'/>"), 10, 10, 0xff8080);
    EXPECT_COLOR(drawBody(rect + "fill-opacity='.5' opacity='.5'/>"), 10, 10, 0xffbfbf);
    EXPECT_COLOR(drawBody("<rect width='20' height='20' fill='rgba(255,0,0,.5)'/>"), 10, 10, 0xff8080);
    EXPECT_COLOR(drawBody("<rect width='20' height='20' fill='#f008'/>"), 10, 10, 0xff7777);
    EXPECT_EQ(drawBody(rect + "opacity='0'/>"), drawBody(""));
}

TEST(Style, StrokeOpacityIsTheStrokesAlone) {
    const Picture picture = drawBody(
        "<rect x='10' y='10' width='40' height='40' fill='red' stroke='blue' "
        "stroke-width='10' stroke-opacity='.5'/>");
    EXPECT_EQ(picture.at(30, 30), kRed);
    EXPECT_COLOR(picture, 7, 30, 0x8080ff);
    EXPECT_COLOR(picture, 12, 30, 0x800080);
}

TEST(Style, OpacityCoversFillAndStrokeAsOnePicture) {
    const Picture picture = drawBody(
        "<rect x='10' y='10' width='40' height='40' fill='red' stroke='blue' "
        "stroke-width='10' opacity='.5'/>");
    EXPECT_COLOR(picture, 30, 30, 0xff8080);
    EXPECT_COLOR(picture, 7, 30, 0x8080ff);
    EXPECT_COLOR(picture, 12, 30, 0x8080ff);
}

TEST(Style, FillRule) {
    const std::string path = "<path d='M10 10H60V60H10z M20 20H50V50H20z' fill='red' ";
    EXPECT_EQ(drawBody(path + "/>").at(35, 35), kRed);
    EXPECT_EQ(drawBody(path + "fill-rule='evenodd'/>").at(35, 35), kWhite);
}

TEST(Style, StrokeWidthAndCaps) {
    const std::string line = "<path d='M50 50H100' stroke='red' stroke-width='10' ";
    const Picture butt = drawBody(line + "/>");
    EXPECT_EQ(butt.at(75, 45), kRed);
    EXPECT_EQ(butt.at(75, 44), kWhite);
    EXPECT_EQ(butt.at(48, 50), kWhite);
    EXPECT_EQ(drawBody(line + "stroke-linecap='square'/>").at(45, 45), kRed);
    const Picture round = drawBody(line + "stroke-linecap='round'/>");
    EXPECT_EQ(round.at(47, 50), kRed);
    EXPECT_EQ(round.at(45, 45), kWhite);
    EXPECT_EQ(drawBody(line + "style='stroke-width:0'/>"), drawBody(""));
}

TEST(Style, Joins) {
    const std::string corner = "<path d='M20 80V20H80' fill='none' stroke='red' stroke-width='20' ";
    EXPECT_EQ(drawBody(corner + "/>").at(11, 11), kRed);
    EXPECT_EQ(drawBody(corner + "stroke-linejoin='bevel'/>").at(11, 11), kWhite);
    EXPECT_EQ(drawBody(corner + "stroke-linejoin='round'/>").at(11, 11), kWhite);
    EXPECT_EQ(drawBody(corner + "stroke-miterlimit='1'/>").at(11, 11), kWhite);
}

TEST(Style, Dashes) {
    const std::string line = "<path d='M0 50H200' stroke='red' stroke-width='10' stroke-dasharray='20 10' ";
    const Picture picture = drawBody(line + "/>");
    EXPECT_EQ(picture.at(19, 50), kRed);
    EXPECT_EQ(picture.at(20, 50), kWhite);
    EXPECT_EQ(picture.at(29, 50), kWhite);
    EXPECT_EQ(picture.at(30, 50), kRed);
    EXPECT_EQ(drawBody(line + "stroke-dashoffset='20'/>").at(0, 50), kWhite);
    EXPECT_EQ(drawBody(line + "style='stroke-dasharray:none'/>").at(25, 50), kRed);
    EXPECT_EQ(drawBody(line + "style='stroke-dasharray:5 -5'/>").at(25, 50), kRed);
}

TEST(Style, PaintOrder) {
    const std::string rect =
        "<rect x='20' y='20' width='40' height='40' fill='red' stroke='blue' "
        "stroke-width='20' ";
    EXPECT_EQ(drawBody(rect + "/>").at(25, 40), 0x0000ffU);
    EXPECT_EQ(drawBody(rect + "paint-order='stroke'/>").at(25, 40), kRed);
}

TEST(Style, StrokeThatKeepsItsWidth) {
    const std::string line = "<g transform='scale(10)'><path d='M2 5H8' stroke='red' stroke-width='4' ";
    EXPECT_EQ(drawBody(line + "/></g>").at(50, 60), kRed);
    const Picture kept = drawBody(line + "vector-effect='non-scaling-stroke'/></g>");
    EXPECT_EQ(kept.at(50, 51), kRed);
    EXPECT_EQ(kept.at(50, 53), kWhite);
}

TEST(Style, TheCascadeIsThatOfImport) {
    const std::string sheet = "<style>rect{fill-opacity:.5} .c{fill-opacity:.25} #a{fill-opacity:1}</style>";
    EXPECT_EQ(squareColor("fill='red' fill-opacity='0'", sheet), kRed);
    EXPECT_EQ(squareColor("fill='red' style='fill-opacity:0'", sheet), kWhite);
    EXPECT_EQ(
        squareColor("fill='red' style='fill-opacity:0'", "<style>.c{fill-opacity:1 !important}</style>"),
        kRed);
    EXPECT_EQ(squareColor("fill='red' FILL-OPACITY='0' style='FILL-OPACITY:1'"), kRed);
}

TEST(Style, InheritedPropertiesComeFromTheContainers) {
    const Picture picture = drawBody(
        "<g stroke-width='20' stroke-linecap='square' fill-opacity='0'><g>"
        "<path d='M50 50H60L70 50' stroke='red' fill='blue'/></g></g>");
    EXPECT_EQ(picture.at(41, 41), kRed);
}

TEST(Style, InheritAndInitialTakeTheirValues) {
    EXPECT_EQ(drawBody("<g opacity='.5'><rect width='20' height='20' fill='red' opacity='inherit'/></g>"),
              drawBody("<g opacity='.5'><rect width='20' height='20' fill='red' opacity='.5'/></g>"));
    EXPECT_EQ(drawBody("<g fill-opacity='0'><rect width='20' height='20' fill='red' "
                       "style='fill-opacity:initial'/></g>")
                  .at(10, 10),
              kRed);
}

TEST(Style, InvalidValuesChangeNothing) {
    EXPECT_EQ(squareColor("fill='red' fill-opacity='much' opacity='x'"), kRed);
    EXPECT_EQ(drawBody("<path d='M20 20H60' stroke='red' stroke-width='-10'/>"),
              drawBody("<path d='M20 20H60' stroke='red'/>"));
}

TEST(Style, ColoursFollowedBySomethingElseAreNoColours) {
    EXPECT_COLOR(drawBody(box("fill='rgb(255,0,0) foo'")), 50, 50, 0);
    EXPECT_COLOR(drawBody(box("fill='#ff0000;'")), 50, 50, 0);
    EXPECT_COLOR(drawBody(box("fill='#ff0000 icc-color(a, 0.1)'")), 50, 50, kRed);
}

TEST(Style, CommasAskForComponentsOfOneKind) {
    EXPECT_COLOR(drawBody(box("fill='rgb(100%,0,0)'")), 50, 50, 0);
    EXPECT_COLOR(drawBody(box("fill='hsl(120,100,50)'")), 50, 50, 0);
    EXPECT_COLOR(drawBody(box("fill='rgb(100% 0 0)'")), 50, 50, kRed);
    EXPECT_COLOR(drawBody(box("fill='rgb(255,0,0'")), 50, 50, kRed);
}

TEST(Style, APaintOrderNamesEveryPartOnce) {
    const std::string thick = "fill='lime' stroke='red' stroke-width='20' paint-order=";
    EXPECT_COLOR(drawBody(box(thick + "'stroke'")), 25, 50, kLime);
    EXPECT_COLOR(drawBody(box(thick + "'stroke foo'")), 25, 50, kRed);
    EXPECT_COLOR(drawBody(box(thick + "'stroke fill stroke'")), 25, 50, kRed);
}

TEST(Style, DashesThatEndWithACommaAreNone) {
    const std::string line = "<path d='M0 50H200' stroke='red' stroke-width='20' stroke-dasharray=";
    EXPECT_COLOR(drawBody(line + "'20 20'/>"), 30, 50, kWhite);
    EXPECT_COLOR(drawBody(line + "'20 20,'/>"), 30, 50, kRed);
}

TEST(Style, DashesAreMeasuredInTheLengthThatAPathSays) {
    const std::string line = "<path d='M0 50H200' stroke='red' stroke-width='20' stroke-dasharray='1' ";
    const Picture scaled = drawBody(line + "pathLength='4'/>");
    EXPECT_COLOR(scaled, 25, 50, kRed);
    EXPECT_COLOR(scaled, 75, 50, kWhite);
    EXPECT_COLOR(drawBody(line + "pathLength='0'/>"), 75, 50, kRed);
}

}  // namespace

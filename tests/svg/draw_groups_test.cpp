// Groups that are painted as one: opacity, clip paths, masks.
#include <utility>

#include "picture.h"
#include "support.h"

namespace {

using namespace svg_test;

const std::string kRedPage = "<rect width='200' height='100' fill='red' ";

TEST(DrawGroups, OpacityCoversTheGroupAsOnePicture) {
    const Picture picture = drawBody(
        "<g opacity='.5'><rect width='40' height='40' fill='red'/>"
        "<rect x='20' y='20' width='40' height='40' fill='blue'/></g>");
    EXPECT_COLOR(picture, 10, 10, 0xff8080);
    EXPECT_COLOR(picture, 30, 30, 0x8080ff);
    EXPECT_COLOR(picture, 50, 50, 0x8080ff);
    EXPECT_EQ(picture.at(70, 10), kWhite);
}

TEST(DrawGroups, GroupsInGroupsMultiply) {
    const Picture picture = drawBody(
        "<g opacity='.5'><g opacity='.5'><rect width='9' height='9' fill='red'/>"
        "</g><rect x='20' width='9' height='9' fill='red'/></g>"
        "<g opacity='.5'><rect x='40' width='9' height='9' fill='red'/></g>");
    EXPECT_COLOR(picture, 4, 4, 0xffbfbf);
    EXPECT_COLOR(picture, 24, 4, 0xff8080);
    EXPECT_COLOR(picture, 44, 4, 0xff8080);
}

TEST(DrawGroups, ManyGroupsDoNotMixWithEachOther) {
    std::string body;
    for (int i = 0; i < 20; ++i)
        body += "<g opacity='.5'><rect x='" + std::to_string(i * 10) +
                "' width='5' height='100' fill='red'/></g>";
    const Picture picture = drawBody(body);
    for (int i = 0; i < 20; ++i) {
        EXPECT_COLOR(picture, i * 10 + 2, 50, 0xff8080);
        EXPECT_EQ(picture.at(i * 10 + 7, 50), kWhite);
    }
}

TEST(DrawGroups, ClipPathCutsAGroupAndALeaf) {
    const std::string clip = "<clipPath id='c'><rect x='20' y='20' width='40' height='40'/></clipPath>";
    for (const std::string& body :
         {"<g clip-path='url(#c)'>" + kRedPage + "/></g>", kRedPage + "clip-path='url(#c)'/>"}) {
        const Picture picture = drawBody(clip + body);
        EXPECT_EQ(picture.at(20, 20), kRed);
        EXPECT_EQ(picture.at(59, 59), kRed);
        EXPECT_EQ(picture.at(19, 20), kWhite);
        EXPECT_EQ(picture.at(60, 59), kWhite);
    }
}

TEST(DrawGroups, WhatFollowsAClippedGroupIsNotCut) {
    const Picture picture = drawBody(
        "<clipPath id='c'><rect width='20' height='20'/></clipPath>"
        "<g clip-path='url(#c)'><rect width='9' height='9'/></g>" +
        kRedPage + "/>");
    EXPECT_EQ(picture.at(150, 50), kRed);
}

TEST(DrawGroups, ClipPathInTheBoxOfTheElement) {
    const Picture picture = drawBody(
        "<clipPath id='c' clipPathUnits='objectBoundingBox'>"
        "<rect x='.5' width='.5' height='1'/></clipPath><g clip-path='url(#c)'>"
        "<rect x='20' y='20' width='20' height='20' fill='red'/>"
        "<rect x='80' y='20' width='20' height='20' fill='red'/></g>");
    EXPECT_EQ(picture.at(30, 30), kWhite);
    EXPECT_EQ(picture.at(81, 30), kRed);
}

TEST(DrawGroups, OverlappingShapesOfAClipPathJoin) {
    const Picture picture =
        drawBody("<clipPath id='c'><path d='M10 10H60V60H10z'/><path d='M40 10V60H90V10z'/></clipPath>" +
                 kRedPage + "clip-path='url(#c)'/>");
    EXPECT_EQ(picture.at(50, 30), kRed);
    EXPECT_EQ(picture.at(20, 30), kRed);
    EXPECT_EQ(picture.at(80, 30), kRed);
    EXPECT_EQ(picture.at(100, 30), kWhite);
}

TEST(DrawGroups, ClipRuleAndTransformsOfTheShapesCount) {
    const Picture picture = drawBody(
        "<clipPath id='c' transform='translate(10 0)'><path clip-rule='evenodd' transform='translate(0 10)' "
        "d='M0 0H60V60H0z M20 20H40V40H20z'/></clipPath>" +
        kRedPage + "clip-path='url(#c)'/>");
    EXPECT_EQ(picture.at(10, 10), kRed);
    EXPECT_EQ(picture.at(40, 40), kWhite);
    EXPECT_EQ(picture.at(9, 10), kWhite);
}

TEST(DrawGroups, ShapesOfAClipPathHaveTheirOwnClipPath) {
    const Picture picture = drawBody(
        "<clipPath id='half'><rect width='50' height='100'/></clipPath><clipPath id='c'>"
        "<rect y='0' width='100' height='20' clip-path='url(#half)'/>"
        "<rect y='50' width='100' height='20'/></clipPath>" +
        kRedPage + "clip-path='url(#c)'/>");
    EXPECT_EQ(picture.at(40, 10), kRed);
    EXPECT_EQ(picture.at(60, 10), kWhite);
    EXPECT_EQ(picture.at(60, 60), kRed);
}

TEST(DrawGroups, AClipPathIsCutByItsOwn) {
    const Picture picture = drawBody(
        "<clipPath id='half'><rect width='50' height='100'/></clipPath>"
        "<clipPath id='c' clip-path='url(#half)'><rect width='100' height='20'/></clipPath>" +
        kRedPage + "clip-path='url(#c)'/>");
    EXPECT_EQ(picture.at(40, 10), kRed);
    EXPECT_EQ(picture.at(60, 10), kWhite);
}

TEST(DrawGroups, UseInAClipPath) {
    const Picture picture = drawBody(
        "<defs><rect id='r' width='20' height='20'/></defs>"
        "<clipPath id='c'><use href='#r' x='40'/></clipPath>" +
        kRedPage + "clip-path='url(#c)'/>");
    EXPECT_EQ(picture.at(45, 5), kRed);
    EXPECT_EQ(picture.at(5, 5), kWhite);
}

TEST(DrawGroups, EmptyClipPathHidesAndAMissingOneDoesNot) {
    EXPECT_EQ(drawBody("<clipPath id='c'/>" + kRedPage + "clip-path='url(#c)'/>"), drawBody(""));
    EXPECT_EQ(drawBody(kRedPage + "clip-path='url(#c)'/>").at(50, 50), kRed);
}

TEST(DrawGroups, MaskShowsByLuminance) {
    const Picture picture = drawBody(
        "<mask id='m' maskUnits='userSpaceOnUse' x='0' y='0' width='200' height='100'>"
        "<rect width='40' height='100' fill='white'/><rect x='40' width='40' height='100' fill='#808080'/>"
        "<rect x='80' width='40' height='100' fill='black'/>"
        "<rect x='120' width='40' height='100' fill='white' fill-opacity='.5'/></mask><g mask='url(#m)'>" +
        kRedPage + "/></g>");
    EXPECT_EQ(picture.at(20, 50), kRed);
    EXPECT_COLOR(picture, 60, 50, 0xff7f7f);
    EXPECT_EQ(picture.at(100, 50), kWhite);
    EXPECT_COLOR(picture, 140, 50, 0xff8080);
    EXPECT_EQ(picture.at(180, 50), kWhite);
}

TEST(DrawGroups, AlphaMaskShowsByOpacity) {
    const Picture picture = drawBody(
        "<mask id='m' mask-type='alpha' width='1' height='1' x='0' y='0'>"
        "<rect width='40' height='100' fill='black'/></mask>" +
        kRedPage + "mask='url(#m)'/>");
    EXPECT_EQ(picture.at(20, 50), kRed);
    EXPECT_EQ(picture.at(60, 50), kWhite);
}

TEST(DrawGroups, MaskRegionAndContentInTheBox) {
    const Picture picture = drawBody(
        "<mask id='m' x='0' y='0' width='.5' height='1' "
        "maskContentUnits='objectBoundingBox'>"
        "<rect width='1' height='.5' fill='white'/></mask>"
        "<rect x='20' y='20' width='40' height='40' fill='red' mask='url(#m)'/>");
    EXPECT_EQ(picture.at(25, 25), kRed);
    EXPECT_EQ(picture.at(45, 25), kWhite);
    EXPECT_EQ(picture.at(25, 45), kWhite);
}

TEST(DrawGroups, MaskAndOpacityAndClipPathTogether) {
    const Picture picture = drawBody(
        "<clipPath id='c'><rect width='100' height='50'/></clipPath><mask id='m'>"
        "<rect width='50' height='100' fill='white'/></mask>"
        "<g clip-path='url(#c)' mask='url(#m)' opacity='.5'>" +
        kRedPage + "/></g>");
    EXPECT_COLOR(picture, 25, 25, 0xff8080);
    EXPECT_EQ(picture.at(75, 25), kWhite);
    EXPECT_EQ(picture.at(25, 75), kWhite);
}

TEST(DrawGroups, DefinitionsShowWhereverTheyStand) {
    const Picture picture =
        drawBody("<g display='none'><mask id='m'><rect width='50' height='100' fill='white'/></mask></g>" +
                 kRedPage + "mask='url(#m)'/><rect x='100' width='9' height='9' fill='blue'/>");
    EXPECT_EQ(picture.at(25, 25), kRed);
    EXPECT_EQ(picture.at(75, 25), kWhite);
    EXPECT_EQ(picture.at(104, 4), kBlue);
}

TEST(DrawMasks, ThatReferToThemselvesAreDrawnOnce) {
    const std::string whole = box("fill='lime' mask='url(#m)'");
    const std::string part = "<circle cx='50' cy='50' r='20' fill='white' ";
    const Picture itself = drawBody("<mask id='m' mask='url(#m)'>" + part + "/></mask>" + whole);
    EXPECT_COLOR(itself, 50, 50, kLime);
    EXPECT_COLOR(itself, 100, 50, kWhite);
    EXPECT_COLOR(drawBody("<mask id='m'>" + part + "mask='url(#m)'/></mask>" + whole), 50, 50, kLime);
    EXPECT_COLOR(drawBody("<mask id='m'>" + part + "mask='url(#n)'/></mask><mask id='n'>" + part +
                          "mask='url(#m)'/></mask>" + whole),
                 50, 50, kLime);
}

TEST(DrawMasks, MayBeReadInLinearColours) {
    const std::string rest =
        "><rect width='200' height='100' fill='#bcbcbc'/></mask>" + box("mask='url(#m)'");
    EXPECT_COLOR(drawBody("<mask id='m'" + rest), 50, 50, 0x434343);
    EXPECT_TRUE(
        hasColor(drawBody("<mask id='m' color-interpolation='linearRGB'" + rest), 50, 50, 0x808080, 4));
}

TEST(DrawMasks, MayShowWhatTheyAreCutFrom) {
    const Picture picture = drawBody(
        "<defs><rect id='r' width='200' height='100'/><rect id='s' x='50' width='50' height='100'/>"
        "<g id='g'><use href='#r' mask='url(#m)'/></g></defs>"
        "<mask id='m'><use href='#r' fill='white'/><use href='#s' fill='black'/></mask>"
        "<mask id='n'><use href='#g' fill='white'/></mask>" +
        kRedPage + "mask='url(#n)'/>");
    EXPECT_COLOR(picture, 25, 50, kRed);
    EXPECT_COLOR(picture, 75, 50, kWhite);
}

// The corners of a square of 60 from 20, 20, its middle, and 10 outside it, as far as they show.
std::string shownBy(const std::string& clipPath, const std::string& more = "") {
    const Picture picture =
        drawBody("<rect x='20' y='20' width='60' height='60' fill='red' style='clip-path:" + clipPath + "' " +
                 more + "/>");
    std::string shown;
    for (const auto& [x, y] : {std::pair{22, 22}, {77, 22}, {77, 77}, {22, 77}, {50, 50}, {12, 50}})
        shown += picture.at(x, y) == kWhite ? '.' : '#';
    return shown;
}

TEST(DrawClips, CirclesAndEllipsesOfStyleSheetsCut) {
    EXPECT_EQ(shownBy("none"), "#####.");
    EXPECT_EQ(shownBy("circle()"), "....#.");
    EXPECT_EQ(shownBy("circle(60px at 0 0)"), "##.##.");
    EXPECT_EQ(shownBy("circle(20px at left 5px bottom 5px)"), "...#..");
    EXPECT_EQ(shownBy("circle(farthest-side at 0 0)"), "##.##.");
    EXPECT_EQ(shownBy("circle(0)"), "......");
    EXPECT_EQ(shownBy("ellipse(200% 10% at top)"), "##....");
    EXPECT_EQ(shownBy("ellipse(closest-side farthest-side at 50% 10%)"), "##..#.");
}

TEST(DrawClips, BoxesOfStyleSheetsCut) {
    EXPECT_EQ(shownBy("inset(10px)"), "....#.");
    EXPECT_EQ(shownBy("inset(0 0 50% 0)"), "##....");
    EXPECT_EQ(shownBy("inset(0 10px)"), "....#.");
    EXPECT_EQ(shownBy("inset(0 round 0 20px 0 20px)"), "#.#.#.");
    EXPECT_EQ(shownBy("inset(0 round 100%)"), "....#.");
    EXPECT_EQ(shownBy("inset(0 round calc(40px / 2) 0 0 0 / 20px)"), ".####.");
    EXPECT_EQ(shownBy("inset(60% 0 60% 0)"), "......");
    EXPECT_EQ(shownBy("rect(0 auto 10px 0)"), "##....");
    EXPECT_EQ(shownBy("xywh(50% 0 100% 100%)"), ".##.#.");
}

TEST(DrawClips, PolygonsAndPathsOfStyleSheetsCut) {
    EXPECT_EQ(shownBy("polygon(0 0, 100% 0, 0 100%)"), "##.#..");
    EXPECT_EQ(
        shownBy("polygon(evenodd, 0 0, 60px 0, 60px 60px, 0 60px, 0 0, 20px 20px, 40px 20px, 40px 40px, "
                "20px 40px, 20px 20px)"),
        "####..");
    EXPECT_EQ(shownBy("path(\"M0 0H60V10H0z\")"), "##....");
    EXPECT_EQ(shownBy("path(evenodd, \"M0 0H60V60H0zM20 20H40V40H20z\")"), "####..");
}

TEST(DrawClips, ShapesOfStyleSheetsReferToABox) {
    const std::string thick = "stroke='blue' stroke-width='20'";
    EXPECT_EQ(shownBy("fill-box", thick), "#####.");
    EXPECT_EQ(shownBy("inset(0)", thick), "######");
    EXPECT_EQ(shownBy("inset(0) stroke-box", thick), "######");
    EXPECT_EQ(shownBy("fill-box inset(50% 0 0 0)", thick), "..###.");
    EXPECT_EQ(shownBy("view-box inset(0 75% 0 0)"), "#..#..");
    const Picture group = drawBody("<g style='clip-path:circle(50%)'>" + box("fill='red'") + "</g>");
    EXPECT_COLOR(group, 70, 50, kRed);
    EXPECT_COLOR(group, 25, 15, kWhite);
    const Picture turned = drawBody(
        "<rect width='40' height='20' fill='red' transform='translate(100,10) rotate(90)' "
        "clip-path='inset(0 50% 0 0)'/>");
    EXPECT_COLOR(turned, 90, 15, kRed);
    EXPECT_COLOR(turned, 90, 45, kWhite);
}

TEST(DrawClips, WhatIsNoShapeDoesNotCut) {
    for (const char* const invalid :
         {"circle(-5px)", "circle(20)", "circle(5px 5px)", "circle(5px at)", "circle(5px", "ellipse(5px)",
          "inset()", "inset(1px 2px 3px 4px 5px)", "inset(5px round)", "inset(5px round -1px)",
          "polygon(1px)", "polygon(evenodd)", "path(M0 0)", "rect(1px 2px 3px)", "xywh(0 0 -1px 0)",
          "foo(5px)", "circle() circle()", "fill-box view-box", "circle() none"}) {
        EXPECT_EQ(shownBy(invalid), "#####.") << invalid;
    }
    EXPECT_EQ(shownBy("circle(0);clip-path:foo()"), "......");
}

TEST(DrawClips, UsesInThemMayBeCutThemselves) {
    const Picture picture = drawBody(
        "<clipPath id='half'><rect width='60' height='100'/></clipPath>"
        "<defs><circle id='k' cx='60' cy='50' r='40'/></defs>"
        "<clipPath id='c'><use href='#k' clip-path='url(#half)'/></clipPath>"
        "<rect width='200' height='100' fill='red' clip-path='url(#c)'/>");
    EXPECT_COLOR(picture, 40, 50, kRed);
    EXPECT_COLOR(picture, 80, 50, kWhite);
}

TEST(DrawClips, WhoseShapesAreCutInACircleShowWhatAllLeave) {
    const Picture picture = drawBody(
        "<clipPath id='c'><rect width='100' height='100' clip-path='url(#d)'/></clipPath>"
        "<clipPath id='d'><rect x='50' width='100' height='100' clip-path='url(#c)'/></clipPath>"
        "<rect width='200' height='100' fill='red' clip-path='url(#c)'/>");
    EXPECT_COLOR(picture, 75, 50, kRed);
    EXPECT_COLOR(picture, 25, 50, kWhite);
    EXPECT_COLOR(picture, 125, 50, kWhite);
}

}  // namespace

// Groups that are painted as one: opacity, clip paths, masks.
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

}  // namespace

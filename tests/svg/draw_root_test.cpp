// What the root element's own properties do to the whole drawing.
#include "picture.h"
#include "support.h"

namespace {

using namespace svg_test;

// A page of 200 by 100 with these attributes on its root, red all over.
Picture drawRoot(const std::string& attributes, const std::string& definitions = "",
                 const AAffine& toPixels = {}) {
    const auto document =
        readText("<svg xmlns='http://www.w3.org/2000/svg' width='200' height='100' " + attributes + ">" +
                 definitions + "<rect width='200' height='100' fill='red'/></svg>");
    return Picture(*document, toPixels);
}

TEST(DrawRoot, OpacityCoversTheDrawingAsOnePicture) {
    EXPECT_COLOR(drawRoot("opacity='.5'"), 50, 50, 0xff8080);
    EXPECT_COLOR(drawRoot("style='opacity:50%'"), 50, 50, 0xff8080);
    // What is covered within the drawing does not show through.
    EXPECT_COLOR(drawRoot("opacity='.5'", "<rect width='200' height='100' fill='blue'/>"), 50, 50, 0xff8080);
    EXPECT_EQ(drawRoot("opacity='0'").at(50, 50), kWhite);
}

TEST(DrawRoot, AStyleSheetReachesTheRoot) {
    EXPECT_COLOR(drawRoot("class='r'", "<style>.r{opacity:.5}</style>"), 50, 50, 0xff8080);
}

TEST(DrawRoot, ClipPathCutsTheDrawing) {
    const Picture picture =
        drawRoot("clip-path='url(#c)'", "<clipPath id='c'><rect width='60' height='40'/></clipPath>");
    EXPECT_EQ(picture.at(59, 39), kRed);
    EXPECT_EQ(picture.at(60, 39), kWhite);
    EXPECT_EQ(picture.at(59, 40), kWhite);
    EXPECT_EQ(drawRoot("clip-path='url(#c)'", "<clipPath id='c'/>").at(50, 50), kWhite);
    EXPECT_EQ(drawRoot("clip-path='url(#missing)'").at(50, 50), kRed);
}

TEST(DrawRoot, ClipPathIsInUnitsOutsideTheViewBox) {
    // One unit of the content, which is what documents count in, is two of the page.
    const Picture picture =
        drawRoot("viewBox='0 0 100 50' clip-path='url(#c)'",
                 "<clipPath id='c'><rect width='60' height='40'/></clipPath>", AAffine::scaling(2));
    EXPECT_EQ(picture.at(59, 39), kRed);
    EXPECT_EQ(picture.at(60, 39), kWhite);
    EXPECT_EQ(picture.at(59, 40), kWhite);
}

// As the page does: a side that is not given follows the view box, and what is beside the box counts.
TEST(DrawRoot, ClipPathIsInUnitsOfTheSizeThatThePageHas) {
    const auto draw = [](const std::string& attributes, const AAffine& toPixels) {
        return Picture(*readText("<svg xmlns='http://www.w3.org/2000/svg' clip-path='url(#c)' " + attributes +
                                 "><clipPath id='c'><rect width='60' height='40'/></clipPath>"
                                 "<rect x='-99' y='-99' width='999' height='999' fill='red'/></svg>"),
                       toPixels);
    };
    for (const char* size : {"width='200'", "height='100'", "width='200' height='100%'"}) {
        const Picture picture = draw(std::string("viewBox='0 0 100 50' ") + size, AAffine::scaling(2));
        EXPECT_EQ(picture.at(59, 39), kRed) << size;
        EXPECT_EQ(picture.at(60, 39), kWhite) << size;
        EXPECT_EQ(picture.at(59, 40), kWhite) << size;
    }
    // The box stands in the middle of a wider page, which begins 50 pixels before it.
    const Picture wide = draw("viewBox='0 0 100 100' width='200' height='100'", AAffine::translation(50, 0));
    EXPECT_EQ(wide.at(0, 0), kRed);
    EXPECT_EQ(wide.at(59, 39), kRed);
    EXPECT_EQ(wide.at(60, 39), kWhite);
}

TEST(DrawRoot, ClipPathFollowsTheView) {
    const Picture picture =
        drawRoot("clip-path='url(#c)'", "<clipPath id='c'><rect width='60' height='40'/></clipPath>",
                 AAffine{0.5, 0, 0, 0.5, 10, 20});
    EXPECT_EQ(picture.at(39, 39), kRed);
    EXPECT_EQ(picture.at(40, 39), kWhite);
    EXPECT_EQ(picture.at(39, 40), kWhite);
    EXPECT_EQ(picture.at(10, 20), kRed);
    EXPECT_EQ(picture.at(9, 20), kWhite);
}

TEST(DrawRoot, MaskShowsTheDrawingInPart) {
    const Picture picture =
        drawRoot("mask='url(#m)'",
                 "<mask id='m' maskUnits='userSpaceOnUse' x='0' y='0' width='200' height='100'>"
                 "<rect width='60' height='100' fill='white'/>"
                 "<rect x='60' width='60' height='100' fill='white' fill-opacity='.5'/></mask>");
    EXPECT_EQ(picture.at(30, 50), kRed);
    EXPECT_COLOR(picture, 90, 50, 0xff8080);
    EXPECT_EQ(picture.at(150, 50), kWhite);
}

TEST(DrawRoot, FilterChangesTheDrawing) {
    EXPECT_COLOR(drawRoot("style='filter:invert(1)'"), 50, 50, 0x00ffff);
    const Picture picture = drawRoot(
        "filter='url(#f)'", "<filter id='f' x='0' y='0' width='1' height='1'><feOffset dx='50'/></filter>");
    EXPECT_EQ(picture.at(49, 50), kWhite);
    EXPECT_EQ(picture.at(50, 50), kRed);
}

TEST(DrawRoot, AllOfThemTogether) {
    const Picture picture = drawRoot("opacity='.5' clip-path='url(#c)' style='filter:invert(1)'",
                                     "<clipPath id='c'><rect width='60' height='40'/></clipPath>");
    EXPECT_COLOR(picture, 30, 20, 0x80ffff);
    EXPECT_EQ(picture.at(70, 20), kWhite);
}

TEST(DrawRoot, EveryPictureOfAViewIsTheSame) {
    const auto document = readText(
        "<svg xmlns='http://www.w3.org/2000/svg' width='200' height='100' opacity='.5'>"
        "<rect width='100' height='100' fill='red' style='mix-blend-mode:multiply'/></svg>");
    const Picture first(*document);
    EXPECT_COLOR(first, 50, 50, 0xff8080);
    EXPECT_EQ(Picture(*document), first);
}

TEST(DrawRoot, HasABackground) {
    const auto root = [](const std::string& style) {
        const auto document = readText("<svg xmlns='http://www.w3.org/2000/svg' width='200' height='100' " +
                                       style + "><rect width='20' height='20' fill='red'/></svg>");
        return Picture(*document);
    };
    EXPECT_COLOR(root("style='background:lime'"), 100, 50, kLime);
    EXPECT_COLOR(root("style='background-color:blue;opacity:0'"), 10, 10, kBlue);
    EXPECT_COLOR(root("style='background:lime'"), 10, 10, kRed);
    EXPECT_COLOR(root("background='lime'"), 100, 50, kWhite);
}

}  // namespace

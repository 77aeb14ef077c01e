#include <string>

#include "svg/picture.h"

namespace svg_test {

namespace {

// A rectangle from 0, 0 to 80, 40 filled with the pattern "p".
std::string filled(const std::string& pattern) {
    return "<defs>" + pattern + "</defs><rect width='80' height='40' fill='url(#p)'/>";
}

constexpr const char* kHalfRed = "<rect width='5' height='10' fill='red'/>";

}  // namespace

TEST(DrawPatterns, ATileRepeatsOverTheShapeAndNotBeyond) {
    const Picture picture =
        drawBody(filled(std::string("<pattern id='p' width='10' height='10' patternUnits='userSpaceOnUse'>") +
                        kHalfRed + "</pattern>"));
    for (int x = 0; x < 80; x += 10) {
        EXPECT_COLOR(picture, x, 0, 0xff0000);
        EXPECT_COLOR(picture, x + 4, 39, 0xff0000);
        EXPECT_COLOR(picture, x + 5, 0, 0xffffff);
        EXPECT_COLOR(picture, x + 9, 39, 0xffffff);
    }
    EXPECT_COLOR(picture, 80, 0, 0xffffff);
    EXPECT_COLOR(picture, 0, 40, 0xffffff);
}

TEST(DrawPatterns, TheTransformAndTheStartMoveTheTiles) {
    const Picture picture = drawBody(
        filled(std::string("<pattern id='p' x='2' width='10' height='10' patternUnits='userSpaceOnUse'"
                           " patternTransform='scale(2)'>") +
               kHalfRed + "</pattern>"));
    EXPECT_COLOR(picture, 3, 5, 0xffffff);
    EXPECT_COLOR(picture, 4, 5, 0xff0000);
    EXPECT_COLOR(picture, 13, 5, 0xff0000);
    EXPECT_COLOR(picture, 14, 5, 0xffffff);
    EXPECT_COLOR(picture, 24, 5, 0xff0000);
}

TEST(DrawPatterns, TheContentStartsWhereTheTileDoes) {
    const Picture picture = drawBody(
        "<pattern id='p' x='.25' width='.5' height='1' patternContentUnits='objectBoundingBox'>"
        "<rect width='.25' height='1' fill='blue'/></pattern>"
        "<rect x='20' width='80' height='40' fill='url(#p)'/>");
    EXPECT_COLOR(picture, 22, 5, 0xffffff);
    EXPECT_COLOR(picture, 42, 5, 0x0000ff);
    EXPECT_COLOR(picture, 58, 5, 0x0000ff);
    EXPECT_COLOR(picture, 62, 5, 0xffffff);
}

TEST(DrawPatterns, UnitsOfTheBoxArePartsOfIt) {
    const Picture picture =
        drawBody(filled("<pattern id='p' width='.5' height='1' patternContentUnits='objectBoundingBox'>"
                        "<rect width='.25' height='1' fill='blue'/></pattern>"));
    EXPECT_COLOR(picture, 0, 0, 0x0000ff);
    EXPECT_COLOR(picture, 19, 39, 0x0000ff);
    EXPECT_COLOR(picture, 20, 0, 0xffffff);
    EXPECT_COLOR(picture, 40, 0, 0x0000ff);
}

TEST(DrawPatterns, AViewBoxIsFittedIntoTheTile) {
    const Picture picture =
        drawBody(filled("<pattern id='p' width='.25' height='.5' viewBox='0 0 2 2'>"
                        "<rect width='1' height='2' fill='blue'/></pattern>"));
    EXPECT_COLOR(picture, 9, 5, 0x0000ff);
    EXPECT_COLOR(picture, 10, 5, 0xffffff);
    EXPECT_COLOR(picture, 29, 25, 0x0000ff);
}

TEST(DrawPatterns, WhatIsMissingIsTakenFromThePatternReferredTo) {
    const Picture picture =
        drawBody(filled(std::string("<pattern id='p' href='#q' patternTransform='translate(5)'/>"
                                    "<pattern id='q' width='10' height='10' patternUnits='userSpaceOnUse'>") +
                        kHalfRed + "</pattern>"));
    EXPECT_COLOR(picture, 4, 5, 0xffffff);
    EXPECT_COLOR(picture, 5, 5, 0xff0000);
}

TEST(DrawPatterns, ContentDoesNotLeaveItsTileUnlessItMay) {
    const auto pattern = [](const std::string& more) {
        return filled("<pattern id='p' width='20' height='20' patternUnits='userSpaceOnUse' " + more +
                      "><rect x='15' width='10' height='20' fill='red'/></pattern>");
    };
    EXPECT_COLOR(drawBody(pattern("")), 22, 5, 0xffffff);
    EXPECT_COLOR(drawBody(pattern("overflow='visible'")), 22, 5, 0xff0000);
}

TEST(DrawPatterns, TilesOfBrokenSizesLeaveNoSeams) {
    const Picture picture =
        drawBody(filled("<pattern id='p' width='7.3' height='7.3' patternUnits='userSpaceOnUse'>"
                        "<rect width='7.3' height='7.3' fill='red'/></pattern>"));
    for (int x = 0; x < 80; ++x) EXPECT_COLOR(picture, x, 20, 0xff0000);
    for (int y = 0; y < 40; ++y) EXPECT_COLOR(picture, 40, y, 0xff0000);
}

TEST(DrawPatterns, TilesSmallerThanAPixelMix) {
    const Picture picture =
        drawBody(filled("<pattern id='p' width='.25' height='.25' patternUnits='userSpaceOnUse'>"
                        "<rect width='.125' height='.25' fill='black'/></pattern>"));
    EXPECT_TRUE(hasColor(picture, 40, 20, 0x808080, 24));
}

TEST(DrawPatterns, TinyTilesOfBrokenSizesAreEven) {
    const Picture picture = drawBody(
        filled("<pattern id='p' width='.504' height='.504' patternUnits='userSpaceOnUse' viewBox='0 0 10 10'>"
               "<rect width='5' height='10' fill='black'/></pattern>"));
    for (int x = 1; x < 79; ++x) EXPECT_TRUE(hasColor(picture, x, 20, 0x808080, 24)) << x;
}

TEST(DrawPatterns, AGiantTileShowsItsVisiblePart) {
    const Picture picture =
        drawBody(filled("<pattern id='p' width='1000000' height='1000000' patternUnits='userSpaceOnUse'>"
                        "<rect width='40' height='20' fill='red'/></pattern>"));
    EXPECT_COLOR(picture, 39, 19, 0xff0000);
    EXPECT_COLOR(picture, 40, 19, 0xffffff);
}

TEST(DrawPatterns, CyclesPaintNothingOfThemselves) {
    const Picture own =
        drawBody(filled("<pattern id='p' width='10' height='10' patternUnits='userSpaceOnUse'>"
                        "<rect width='10' height='10' fill='url(#p)'/></pattern>"));
    EXPECT_COLOR(own, 5, 5, 0xffffff);
    const Picture chain = drawBody(filled("<pattern id='p' href='#q'/><pattern id='q' href='#p'/>"));
    EXPECT_COLOR(chain, 5, 5, 0xffffff);
}

TEST(DrawPatterns, HostileNumbersPaintSomethingOrNothing) {
    for (const char* number : {"1e30", "1e-30", "-5", "nan", "0", "1e308", "99999999999999999999"}) {
        const std::string n = number;
        const Picture picture = drawBody(filled("<pattern id='p' x='" + n + "' width='" + n +
                                                "' height='10' patternUnits='userSpaceOnUse'"
                                                " patternTransform='scale(" +
                                                n + ")'><rect width='1' height='1'/></pattern>") +
                                         "<rect x='100' width='10' height='10' fill='red'/>");
        EXPECT_COLOR(picture, 105, 5, 0xff0000) << number;
    }
}

TEST(DrawPatterns, AServerThatCannotPaintGivesWayToTheColourBehindIt) {
    const std::string gradient =
        "<linearGradient id='g'><stop stop-color='red'/><stop offset='1'/></linearGradient>";
    EXPECT_COLOR(drawBody(gradient + "<path d='M0 50H200' stroke='url(#g) lime' stroke-width='20'/>"), 50, 50,
                 kLime);
    EXPECT_COLOR(drawBody(gradient + "<path d='M0 50H200' stroke='url(#g)' stroke-width='20'/>"), 50, 50,
                 kWhite);
    EXPECT_COLOR(drawBody("<pattern id='p' width='40' height='40' patternUnits='userSpaceOnUse'>"
                          "<rect width='40' height='40' fill='url(#p) lime'/></pattern>" +
                          box("fill='url(#p)'")),
                 50, 50, kLime);
}

}  // namespace svg_test

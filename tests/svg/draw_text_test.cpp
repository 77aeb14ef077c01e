#include <string>

#include "svg/picture.h"

namespace svg_test {

namespace {

// Where the ink of a colour is; nothing: left > right. Fonts differ, so tests look at boxes.
struct Ink {
    int left = Picture::kWidth, top = Picture::kHeight, right = -1, bottom = -1;
    int width() const { return right - left + 1; }
    bool isEmpty() const { return right < left; }
};

// Ink that is dark enough in the channels that the colour leaves out.
Ink inkOf(const Picture& picture, std::uint32_t mask = 0xff0000) {
    Ink ink;
    for (int y = 0; y < Picture::kHeight; ++y) {
        for (int x = 0; x < Picture::kWidth; ++x) {
            const std::uint32_t missing = ~picture.at(x, y) & 0xffffff;
            if ((missing & mask & 0x808080) == 0) continue;
            ink.left = std::min(ink.left, x);
            ink.right = std::max(ink.right, x);
            ink.top = std::min(ink.top, y);
            ink.bottom = std::max(ink.bottom, y);
        }
    }
    return ink;
}

Ink inkOfText(const std::string& text) {
    return inkOf(drawBody(text));
}

}  // namespace

TEST(DrawText, LettersStandOnTheirBaseLineAndStartAtTheirPoint) {
    const Ink ink = inkOfText("<text x='50' y='60' font-size='40'>HH</text>");
    EXPECT_NEAR(ink.left, 53, 4);
    EXPECT_NEAR(ink.bottom, 59, 2);
    EXPECT_NEAR(ink.top, 31, 5);
    EXPECT_GT(ink.width(), 35);
}

TEST(DrawText, TheAnchorIsTheMiddleOrTheEndOfAChunk) {
    const Ink middle = inkOfText("<text x='100' y='60' font-size='30' text-anchor='middle'>HHH</text>");
    EXPECT_NEAR((middle.left + middle.right) / 2, 100, 2);
    const Ink end = inkOfText("<text x='100' y='60' font-size='30' text-anchor='end'>HHH</text>");
    EXPECT_NEAR(end.right, 97, 4);
    const Ink parts = inkOfText(
        "<text x='100' y='60' font-size='30' text-anchor='middle'>H<tspan font-size='30'>H</tspan>H</text>");
    EXPECT_NEAR(parts.left, middle.left, 1);
    EXPECT_NEAR(parts.right, middle.right, 1);
}

TEST(DrawText, PartsHaveTheirOwnStyles) {
    const Picture picture = drawBody(
        "<text x='10' y='60' font-size='30'>H<tspan fill='red'>H</tspan><tspan display='none'>HHHH"
        "</tspan></text>");
    const Ink all = inkOf(picture, 0x00ff00);
    const Ink black = inkOf(picture, 0xff0000);
    EXPECT_LT(black.right + 5, all.right);
    EXPECT_LT(all.width(), 60);
}

TEST(DrawText, APartCanStandSomewhereElse) {
    const Picture picture = drawBody(
        "<text x='10' y='30' font-size='20'>H<tspan x='150' y='90' fill='red'>H</tspan>"
        "<tspan dx='-60' dy='-20' fill='red'>H</tspan></text>");
    const Ink all = inkOf(picture, 0x00ff00);
    EXPECT_NEAR(all.right, 164, 5);
    EXPECT_NEAR(all.bottom, 89, 2);
    EXPECT_TRUE(inkOf(picture, 0xff0000).right < 40);
}

TEST(DrawText, PositionListsPlaceCharacters) {
    const Ink spread = inkOfText("<text x='10 60 110 160' y='50' font-size='20'>HHHH</text>");
    EXPECT_NEAR(spread.left, 12, 3);
    EXPECT_NEAR(spread.right, 173, 4);
    const Ink steps = inkOfText("<text x='10' y='20' dy='0 20 20 20' font-size='20'>HHHH</text>");
    EXPECT_NEAR(steps.bottom, 79, 2);
}

TEST(DrawText, WhiteSpaceCountsOnceAndNotAtTheEnds) {
    const Picture plain = drawBody("<text x='10' y='60' font-size='20'>H H</text>");
    EXPECT_EQ(drawBody("<text x='10' y='60' font-size='20'>\n   H \t\n  H   </text>"), plain);
    EXPECT_EQ(drawBody("<text x='10' y='60' font-size='20'><tspan>H </tspan> <tspan>H</tspan></text>"),
              drawBody("<text x='10' y='60' font-size='20'><tspan>H </tspan><tspan>H</tspan></text>"));
    EXPECT_EQ(
        inkOfText("<text x='10' y='60' font-size='20'><tspan>H</tspan> <tspan>H</tspan></text>").width(),
        inkOf(plain).width());
}

TEST(DrawText, PreservedWhiteSpaceKeepsItsWidth) {
    const int one = inkOfText("<text x='10' y='60' font-size='20' xml:space='preserve'>H H</text>").width();
    const int three =
        inkOfText("<text x='10' y='60' font-size='20' xml:space='preserve'>H   H</text>").width();
    EXPECT_GT(three, one + 8);
    EXPECT_EQ(inkOfText("<text x='10' y='60' font-size='20' style='white-space:pre'>H   H</text>").width(),
              three);
}

TEST(DrawText, SpacingWidensTheText) {
    const int plain = inkOfText("<text x='10' y='60' font-size='20'>H HH</text>").width();
    EXPECT_NEAR(inkOfText("<text x='10' y='60' font-size='20' letter-spacing='10'>H HH</text>").width(),
                plain + 30, 2);
    EXPECT_NEAR(inkOfText("<text x='10' y='60' font-size='20' word-spacing='25'>H HH</text>").width(),
                plain + 25, 2);
}

TEST(DrawText, TheTextLengthIsKept) {
    EXPECT_NEAR(inkOfText("<text x='10' y='60' font-size='20' textLength='150'>HHHH</text>").width(), 146, 6);
    EXPECT_NEAR(inkOfText("<text x='10' y='60' font-size='20' textLength='150'"
                          " lengthAdjust='spacingAndGlyphs'>HHHH</text>")
                    .width(),
                142, 9);
}

TEST(DrawText, ATextLengthMuchTooShortNarrowsTheLetters) {
    const Picture spacing = drawBody("<text x='10' y='60' font-size='40' textLength='60'>HHHH</text>");
    EXPECT_EQ(spacing, drawBody("<text x='10' y='60' font-size='40' textLength='60'"
                                " lengthAdjust='spacingAndGlyphs'>HHHH</text>"));
    EXPECT_LT(inkOf(spacing).width(), 61);
}

TEST(DrawText, DecorationsRunUnderAndThroughTheText) {
    const int plain = inkOfText("<text x='10' y='50' font-size='40'>HHH</text>").bottom;
    const Ink under = inkOfText("<text x='10' y='50' font-size='40' text-decoration='underline'>HHH</text>");
    EXPECT_GT(under.bottom, plain + 2);
    const Picture through = drawBody(
        "<text x='10' y='50' font-size='40' "
        "style='text-decoration:line-through'>H<tspan>&#160;</tspan>H</text>");
    EXPECT_EQ(inkOf(through).bottom, plain);
    EXPECT_NE(through, drawBody("<text x='10' y='50' font-size='40'>H<tspan>&#160;</tspan>H</text>"));
}

TEST(DrawText, LinesArePaintedLikeTheElementThatAsksForThem) {
    const Picture picture = drawBody(
        "<g text-decoration='underline' fill='red'><text x='10' y='50' font-size='60' "
        "fill='lime'>HHH</text></g>");
    int red = 0;
    for (int y = 51; y < 70; ++y) red += picture.at(60, y) == kRed ? 1 : 0;
    EXPECT_GT(red, 0);
    EXPECT_EQ(
        drawBody("<g fill='red'><text x='10' y='50' font-size='60' fill='lime'>HHH</text></g>").at(60, 58),
        kWhite);
}

TEST(DrawText, AnAlignmentBaselineMovesAPart) {
    const auto bottom = [](const std::string& attributes) {
        return inkOfText("<text x='10' y='50' font-size='30'><tspan " + attributes + ">H</tspan></text>")
            .bottom;
    };
    EXPECT_GT(bottom("alignment-baseline='middle'"), bottom("") + 4);
    EXPECT_GT(bottom("alignment-baseline='hanging'"), bottom("alignment-baseline='middle'") + 4);
    EXPECT_LT(bottom("alignment-baseline='after-edge'"), bottom("") - 3);
    EXPECT_EQ(bottom("alignment-baseline='auto'"), bottom(""));
}

TEST(DrawText, ATextThatRunsToTheLeftStartsAtItsRight) {
    const Ink ink = inkOfText("<text x='150' y='60' font-size='20' direction='rtl'>HHH</text>");
    EXPECT_LT(ink.right, 153);
    EXPECT_GT(ink.left, 80);
}

TEST(DrawText, LettersThatArePlacedSinglyRunInTheirDirection) {
    // Three Hebrew letters with moves of no length look as without.
    const std::string letters = "&#x5d0;&#x5d5;&#x5dd;</text>";
    const std::string start = "<text x='10' y='60' font-size='40' ";
    const Picture whole = drawBody(start + ">" + letters);
    const Ink placed = inkOfText(start + "dy='0 0.001 0.001'>" + letters);
    EXPECT_NEAR(placed.left, inkOf(whole).left, 2);
    EXPECT_NEAR(placed.right, inkOf(whole).right, 2);
}

TEST(DrawText, LettersThatArePlacedSinglyKeepTheirDistances) {
    const Ink whole = inkOfText("<text x='10' y='60' font-size='60'>AVAV</text>");
    const Ink placed = inkOfText("<text x='10' y='60' font-size='60' rotate='0 0.001'>AVAV</text>");
    EXPECT_NEAR(placed.width(), whole.width(), 2);
}

TEST(DrawText, ColumnsRunDownward) {
    const std::string text = "<text x='100' y='10' font-size='20' writing-mode='vertical-rl' ";
    const Ink ink = inkOfText(text + ">HHHH</text>");
    EXPECT_GT(ink.bottom, ink.width() * 2);
    EXPECT_NEAR((ink.left + ink.right) / 2, 100, 5);
    EXPECT_NEAR(inkOfText(text + "dy='20'>HHHH</text>").bottom, ink.bottom + 20, 1);
}

TEST(DrawText, ATextLengthIsAnchoredAsAWhole) {
    const Ink ink =
        inkOfText("<text x='100' y='60' font-size='20' textLength='150' text-anchor='middle'>HHHH</text>");
    EXPECT_NEAR((ink.left + ink.right) / 2, 100, 3);
}

TEST(DrawText, BaselinesMoveTheText) {
    const int plain = inkOfText("<text x='10' y='50' font-size='30'>H</text>").bottom;
    EXPECT_GT(inkOfText("<text x='10' y='50' font-size='30' dominant-baseline='hanging'>H</text>").bottom,
              plain + 15);
    EXPECT_LT(
        inkOfText("<text x='10' y='50' font-size='30'><tspan baseline-shift='super'>H</tspan></text>").bottom,
        plain - 5);
    EXPECT_GT(
        inkOfText("<text x='10' y='50' font-size='30'><tspan baseline-shift='-10'>H</tspan></text>").bottom,
        plain + 8);
}

TEST(DrawText, CharactersCanBeTurned) {
    const Ink turned = inkOfText("<text x='100' y='20' rotate='90' font-size='30'>I</text>");
    EXPECT_GT(turned.width(), 15);
    EXPECT_LT(turned.bottom - turned.top, 20);
}

TEST(DrawText, ATextFollowsItsPath) {
    const std::string down = "<defs><path id='p' d='M100 0V100'/></defs>";
    const Ink whole =
        inkOfText(down + "<text font-size='16'><textPath href='#p'>HHHHHHHHHHHHHHHHHH</textPath></text>");
    EXPECT_GT(whole.bottom, 80);  // what does not fit is left out
    EXPECT_NEAR(whole.left, 100, 2);
    EXPECT_LT(whole.width(), 18);
    const Ink half =
        inkOfText(down + "<text font-size='16'><textPath href='#p' startOffset='50%'>HH</textPath></text>");
    EXPECT_NEAR(half.top, 52, 4);
    const Ink middle = inkOfText(down +
                                 "<text font-size='16' text-anchor='middle'>"
                                 "<textPath href='#p' startOffset='50%'>HH</textPath></text>");
    EXPECT_NEAR((middle.top + middle.bottom) / 2, 50, 3);
}

TEST(DrawText, TextElsewhereInTheDrawingCanBeShown) {
    EXPECT_EQ(drawBody("<defs><text id='t'>HH</text></defs><text x='10' y='50'><tref href='#t'/></text>"),
              drawBody("<text x='10' y='50'><tspan>HH</tspan></text>"));
    EXPECT_EQ(drawBody("<text x='10' y='50'><a href='#x'>HH</a></text>"),
              drawBody("<text x='10' y='50'>HH</text>"));
}

TEST(DrawText, HiddenPartsKeepTheirRoom) {
    const Ink ink =
        inkOfText("<text x='10' y='50' font-size='20'><tspan visibility='hidden'>HHHH</tspan>H</text>");
    EXPECT_GT(ink.left, 60);
}

TEST(DrawText, DescriptionsAndFlowedTextsAreNotDrawn) {
    EXPECT_TRUE(inkOfText("<text x='10' y='50'><title>HHHH</title><desc>HHH</desc></text>").isEmpty());
    EXPECT_TRUE(inkOfText("<flowRoot><flowRegion><rect width='50' height='50' visibility='hidden'/>"
                          "</flowRegion><flowPara>HHHH</flowPara></flowRoot>")
                    .isEmpty());
}

TEST(DrawText, HostileTextsAreBounded) {
    std::string nested;
    std::string closing;
    for (int i = 0; i < 800; ++i) {
        nested += "<tspan x='1 2 3' rotate='10'>";
        closing += "</tspan>";
    }
    const std::string many(300000, 'x');
    const Picture picture = drawBody(
        "<text y='50'>" + nested + "H" + closing + "</text>" + "<text y='-50'>" + many + "</text>" +
        "<text x='1e30' y='nan' dx='1e308 inf' font-size='1e30' letter-spacing='-1e30'>HH</text>"
        "<text font-size='1e-30'>HH</text><text font-size='-5'>H</text><text textLength='1e30'>HHH</text>"
        "<text textLength='-1'>HHH</text><text rotate='1e30'>HH</text>"
        "<text><textPath href='#self' id='self'>HH</textPath></text>"
        "<text><textPath path='M0 0L1e30 1e30 0 0' startOffset='1e30%'>HH</textPath></text>"
        "<text id='t'><tref href='#t'/></text>"
        "<text>\xED\xA0\x80\xFF&#xD800;&#x10FFFF;</text>"
        "<rect x='190' y='90' width='10' height='10' fill='red'/>");
    EXPECT_COLOR(picture, 195, 95, 0xff0000);
}

TEST(DrawText, PartsHaveEffectsOfTheirOwn) {
    const auto letters = [](const std::string& part) {
        return drawBody("<text x='10' y='60' font-size='60'>H<tspan fill='red' " + part +
                        ">H</tspan>H</text><clipPath id='c'><rect width='200' height='40'/></clipPath>"
                        "<mask id='m'><rect width='200' height='40' fill='white'/></mask>"
                        "<filter id='f'><feFlood flood-color='lime'/></filter>");
    };
    constexpr std::uint32_t kGreen = 0x00ff00;  // where nothing of it is left, the ink is red or black
    const Ink whole = inkOf(letters(""), kGreen);
    const auto redAt = [&](const Picture& picture, int y) {
        int most = 0;
        for (int x = whole.left; x <= whole.right; ++x) {
            const std::uint32_t pixel = picture.at(x, y);
            if (pixel >> 16 == 0xff) most = std::max(most, static_cast<int>(0xff - (pixel & 0xff)));
        }
        return most;
    };
    EXPECT_EQ(redAt(letters(""), 50), 255);
    EXPECT_NEAR(redAt(letters("opacity='0.5'"), 50), 128, 2);
    for (const char* const cut :
         {"clip-path='url(#c)'", "mask='url(#m)'", "style='clip-path:inset(0 0 50% 0)'"}) {
        EXPECT_EQ(redAt(letters(cut), 25), 255) << cut;
        EXPECT_EQ(redAt(letters(cut), 58), 0) << cut;
        // What stands around is whole.
        EXPECT_EQ(inkOf(letters(cut), kGreen).bottom, whole.bottom) << cut;
    }
    EXPECT_COLOR(letters("filter='url(#f)'"), whole.left - 2, 50, 0x00ff00);
}

TEST(DrawText, EffectsOfPartsInPartsJoin) {
    const auto most = [](const std::string& text) {
        const Picture picture = drawBody("<text x='10' y='60' font-size='60'>" + text + "</text>");
        std::uint32_t darkest = 0xff;
        for (int x = 0; x < Picture::kWidth; ++x) darkest = std::min(darkest, picture.at(x, 50) & 0xff);
        return static_cast<int>(darkest);
    };
    EXPECT_NEAR(most("<tspan opacity='0.5'><tspan opacity='0.5'>H</tspan></tspan>"), 191, 2);
    EXPECT_NEAR(most("<tspan opacity='0.5'>H<tspan>H</tspan></tspan>"), 128, 2);
    EXPECT_EQ(most("<tspan opacity='0'>H<tspan>H</tspan></tspan>"), 255);
    EXPECT_EQ(most("<tspan opacity='0'>H</tspan>H"), 0);
    std::string deep = "H";
    for (int i = 0; i < 60; ++i) deep = "<tspan opacity='0.999'>" + deep + "</tspan>";
    EXPECT_LT(most(deep), 40);
}

TEST(DrawText, ALongTextThatIsUsedAgainLooksAsItDidBefore) {
    std::string words;
    for (int i = 0; i < 16; ++i) words += "word " + std::to_string(i) + ' ';
    const std::string text = "<text id='t' y='20' font-size='12'>" + words + "</text>";
    const Picture used = drawBody(text + "<use href='#t' y='40'/><use href='#t' y='60' letter-spacing='1'/>");
    const Picture each = drawBody(text + "<text y='60' font-size='12'>" + words + "</text>" +
                                  "<text y='80' font-size='12' letter-spacing='1'>" + words + "</text>");
    EXPECT_EQ(used, each);
    EXPECT_FALSE(used == drawBody(text));
}

}  // namespace svg_test

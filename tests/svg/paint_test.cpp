// Computed fill and stroke.
#include <sstream>

#include "support.h"

using namespace svg_test;

namespace {

struct PaintCase {
    const char* body;  // the fill of the object "a" is looked at
    const char* fill;
};

class ComputedFill : public testing::TestWithParam<PaintCase> {};

TEST_P(ComputedFill, IsWhatTheCascadeLeaves) {
    EXPECT_EQ(fillOf(GetParam().body), GetParam().fill) << GetParam().body;
}

INSTANTIATE_TEST_SUITE_P(
    Cascade, ComputedFill,
    testing::Values(
        PaintCase{"<rect id='a'/>", "black"}, PaintCase{"<rect id='a' fill='red'/>", "red"},
        PaintCase{"<rect id='a' fill='red' style='fill:blue'/>", "blue"},
        PaintCase{"<style>rect{fill:lime}</style><rect id='a' fill='red'/>", "lime"},
        PaintCase{"<rect id='a' class='c' fill='red'/><style>.c{fill:lime}</style>", "lime"},
        PaintCase{"<style>#a{fill:lime}</style><rect id='a' style='fill:blue'/>", "blue"},
        PaintCase{"<style>#a{fill:lime!important}</style><rect id='a' style='fill:blue'/>", "lime"},
        PaintCase{"<style>#a{fill:lime ! IMPORTANT}</style><rect id='a' style='fill:blue!important'/>",
                  "blue"},
        PaintCase{"<style>rect{fill:red!important} #a{fill:blue}</style><rect id='a'/>", "red"},
        PaintCase{"<style>.c{fill:red} rect{fill:blue} *{fill:lime}</style><rect id='a' class='c'/>", "red"},
        PaintCase{"<style>#a{fill:red} .c.d{fill:blue}</style><rect id='a' class='c d'/>", "red"},
        PaintCase{"<style>.c.d{fill:red} .d{fill:blue}</style><rect id='a' class='c d'/>", "red"},
        PaintCase{"<style>.c{fill:red} .d{fill:blue}</style><rect id='a' class='d c'/>", "blue"},
        PaintCase{"<style>g rect{fill:red} rect{fill:blue}</style><g><rect id='a'/></g>", "red"},
        PaintCase{"<style>rect{fill:red}</style><style>rect{fill:blue}</style><rect id='a'/>", "blue"},
        PaintCase{"<style type='text/x'>rect{fill:red}</style><rect id='a'/>", "black"},
        PaintCase{"<style type='text/css'><![CDATA[ rect { fill : red } ]]></style><rect id='a'/>", "red"}));

INSTANTIATE_TEST_SUITE_P(
    Selectors, ComputedFill,
    testing::Values(
        PaintCase{"<style>g > rect{fill:red}</style><g><rect id='a'/></g>", "red"},
        PaintCase{"<style>svg>rect{fill:red}</style><g><rect id='a'/></g>", "black"},
        PaintCase{"<style>.x rect{fill:red}</style><g class='x'><g><rect id='a'/></g></g>", "red"},
        PaintCase{"<style>.x > g rect{fill:red}</style><g class='x'><g><g><rect id='a'/></g></g></g>", "red"},
        PaintCase{"<style>.x > .y > rect{fill:red}</style>"
                  "<g class='x'><g class='y'><g class='y'><rect id='a'/></g></g></g>",
                  "black"},
        PaintCase{"<style>.x > .y rect{fill:red}</style>"
                  "<g class='x'><g class='y'><g class='y'><rect id='a'/></g></g></g>",
                  "red"},
        PaintCase{"<style>circle, rect , path{fill:red}</style><rect id='a'/>", "red"},
        PaintCase{"<style>rect.c{fill:red}</style><rect id='a' class=' b  c '/>", "red"},
        PaintCase{"<style>rect.c{fill:red}</style><rect id='a' class='cc'/>", "black"},
        PaintCase{"<style>rect:hover, rect[x], rect + rect{fill:red}</style><rect id='a' x='1'/>", "red"},
        PaintCase{"<style>rect:unheard-of, rect[x]{fill:red}</style><rect id='a' x='1'/>", "black"},
        PaintCase{"<style>rect:hover, rect{fill:red}</style><rect id='a'/>", "red"},
        PaintCase{"<style>/* rect{fill:blue} */ rect/**/{fill:/*x*/red;/*}*/}</style><rect id='a'/>", "red"},
        PaintCase{"<style>&lt;!-- rect{fill:red} --></style><rect id='a'/>", "red"},
        PaintCase{"<style>@import 'x.css'; @font-face{src:url(x)} rect{fill:red}</style><rect id='a'/>",
                  "red"},
        PaintCase{"<style>@media screen{rect{fill:red}} @media print{rect{fill:blue}}</style><rect id='a'/>",
                  "red"},
        PaintCase{"<style>rect{fill:red</style><rect id='a'/>", "red"},
        PaintCase{"<style>}} rect{fill:red} rect{</style><rect id='a'/>", "black"},
        PaintCase{"<style>rect{content:'}';fill:red}</style><rect id='a'/>", "red"},
        PaintCase{"<style>rect{FILL:RED}</style><rect id='a'/>", "red"}));

INSTANTIATE_TEST_SUITE_P(
    Inheritance, ComputedFill,
    testing::Values(
        PaintCase{"<g fill='red'><g><rect id='a'/></g></g>", "red"},
        PaintCase{"<g style='fill:red'><rect id='a' fill='inherit'/></g>", "red"},
        PaintCase{"<g fill='red'><rect id='a' fill='initial'/></g>", "black"},
        PaintCase{"<g fill='red'><rect id='a' fill='blue' style='fill:unset'/></g>", "red"},
        PaintCase{"<g fill='none'><rect id='a'/></g>", "none"},
        PaintCase{"<g color='red'><rect id='a' fill='currentColor'/></g>", "red"},
        PaintCase{"<g color='red' fill='currentColor'><rect id='a' color='blue'/></g>", "blue"},
        PaintCase{"<g color='red'><rect id='a' color='currentColor' fill='CURRENTCOLOR'/></g>", "red"},
        PaintCase{"<g color='red'><rect id='a' style='color:inherit;fill:currentColor'/></g>", "red"},
        PaintCase{"<rect id='a' fill='currentColor'/>", "black"}));

INSTANTIATE_TEST_SUITE_P(
    InvalidValues, ComputedFill,
    testing::Values(PaintCase{"<rect id='a' fill='red' style='fill:nonsense'/>", "red"},
                    PaintCase{"<rect id='a' fill='nonsense'/>", "black"},
                    PaintCase{"<rect id='a' fill=''/>", "black"},
                    PaintCase{"<rect id='a' style='fill:red;fill:#12'/>", "red"},
                    PaintCase{"<rect id='a' style=';;:;fill red;fill:blue;'/>", "blue"},
                    PaintCase{"<rect id='a' style='fill'/>", "black"},
                    PaintCase{"<rect id='a' style='x:url(a;b);fill:red'/>", "red"},
                    PaintCase{"<rect id='a' style=\"x:';fill:blue;';fill:red\"/>", "red"},
                    PaintCase{"<rect id='a' style='fill : red ; stroke:none'/>", "red"}));

INSTANTIATE_TEST_SUITE_P(
    Colours, ComputedFill,
    testing::Values(PaintCase{"<rect id='a' fill='#f00'/>", "red"},
                    PaintCase{"<rect id='a' fill='#F00f'/>", "red"},
                    PaintCase{"<rect id='a' fill='#ff0000'/>", "red"},
                    PaintCase{"<rect id='a' fill='#ff000080'/>", "red"},
                    PaintCase{"<rect id='a' fill='#123456'/>", "#123456"},
                    PaintCase{"<rect id='a' fill='#12345'/>", "black"},
                    PaintCase{"<rect id='a' fill='rgb(255,0,0)'/>", "red"},
                    PaintCase{"<rect id='a' fill='RGB( 100% , 0% , 0% )'/>", "red"},
                    PaintCase{"<rect id='a' fill='rgba(255,0,0,.5)'/>", "red"},
                    PaintCase{"<rect id='a' fill='rgb(255 0 0 / 50%)'/>", "red"},
                    PaintCase{"<rect id='a' fill='rgb(300,-5,0)'/>", "red"},
                    PaintCase{"<rect id='a' fill='rgb(50%,50%,50%)'/>", "gray"},
                    PaintCase{"<rect id='a' fill='hsl(120,100%,50%)'/>", "lime"},
                    PaintCase{"<rect id='a' fill='hsl(-240deg 100% 50%)'/>", "lime"},
                    PaintCase{"<rect id='a' fill='hsla(0,100%,25%,1)'/>", "maroon"},
                    PaintCase{"<rect id='a' fill='hsl(0.5turn,100%,50%)'/>", "cyan"},
                    PaintCase{"<rect id='a' fill='rgb(1,2)'/>", "black"},
                    PaintCase{"<rect id='a' fill='rgb(1,2,3'/>", "#010203"},
                    PaintCase{"<rect id='a' fill='#cd853f icc-color(x, 1, 2)'/>", "peru"},
                    PaintCase{"<rect id='a' fill='device-cmyk(0, 1, 1, 0)'/>", "CMYK red"},
                    PaintCase{"<rect id='a' fill='device-cmyk(0% 100% 100% 0%)'/>", "CMYK red"},
                    PaintCase{"<rect id='a' fill='none'/>", "none"},
                    PaintCase{"<rect id='a' fill='transparent'/>", "none"},
                    PaintCase{"<rect id='a' fill='context-fill'/>", "none"},
                    PaintCase{"<rect id='a' fill='context-stroke'/>", "none"},
                    PaintCase{"<text id='a' fill='red'>x</text>", "red"},
                    PaintCase{"<line id='a'/>", "black"}, PaintCase{"<line id='a' fill='red'/>", "red"}));

INSTANTIATE_TEST_SUITE_P(
    References, ComputedFill,
    testing::Values(
        PaintCase{"<rect id='a' fill='url(#g)'/><linearGradient id='g'><stop/><stop/></linearGradient>",
                  "gradient g"},
        PaintCase{"<radialGradient id='g'/><rect id='a' fill='url(#g)'/>", "gradient g"},
        PaintCase{"<pattern id='p'/><rect id='a' style='fill:url(\"#p\")'/>", "pattern p"},
        PaintCase{"<rect id='a' fill='url(#g)'/>", "none"},
        PaintCase{"<rect id='a' fill='url(#g) red'/>", "red"},
        PaintCase{"<rect id='a' fill='url(#g) none'/>", "none"},
        PaintCase{"<rect id='a' color='red' fill='url( #g ) currentColor'/>", "red"},
        PaintCase{"<rect id='a' fill='url(other.svg#g) red'/>", "red"},
        PaintCase{"<rect id='g' /><rect id='a' fill='url(#g) red'/>", "red"},
        PaintCase{"<rect id='a' fill='url(#g'/>", "black"},
        PaintCase{"<linearGradient id='x/y'/><rect id='a' fill='url(#x/y)'/>", "gradient x\xE2\x88\x95y"},
        PaintCase{
            "<linearGradient id='s'><stop stop-color='red'/></linearGradient><rect id='a' fill='url(#s)'/>",
            "Spot s"},
        PaintCase{"<linearGradient id='s' inkscape:label='Accent/1'><stop/></linearGradient>"
                  "<linearGradient id='g' xlink:href='#s'/><rect id='a' fill='url(#g)'/>",
                  "Spot Accent\xE2\x88\x95"
                  "1"},
        PaintCase{"<linearGradient id='s' href='#g'/><linearGradient id='g' href='#s'/>"
                  "<rect id='a' fill='url(#s)'/>",
                  "gradient s"}));

TEST(Stroke, IsComputedLikeFill) {
    const auto document = readBody(
        "<linearGradient id='g'/><rect id='a'/><rect id='b' stroke='red'/><g stroke='blue'><rect id='c'/>"
        "<rect id='d' stroke='none'/></g><rect id='e' stroke='url(#g)'/><rect id='f' stroke='url(#x) lime'/>"
        "<rect id='h' color='red' stroke='currentColor'/>");
    const std::pair<const char*, const char*> expected[] = {{"a", "none"}, {"b", "red"},        {"c", "blue"},
                                                            {"d", "none"}, {"e", "gradient g"}, {"f", "lime"},
                                                            {"h", "red"}};
    for (const auto& [name, stroke] : expected) EXPECT_EQ(strokeOf(*document, name), stroke) << name;
}

TEST(Paint, NoneIsNoBrushAndNoPen) {
    const auto document = readBody("<rect id='a' fill='none'/>");
    EXPECT_FALSE(document->findObject("a")->getBrush());
    EXPECT_FALSE(document->findObject("a")->getPen());
}

TEST(Paint, OfTheSameColourIsShared) {
    const auto document =
        readBody("<rect id='a' fill='red' stroke='#f00'/><rect id='b' fill='rgb(255,0,0)' stroke='red'/>");
    const AObject* a = document->findObject("a");
    const AObject* b = document->findObject("b");
    EXPECT_EQ(a->getBrush(), b->getBrush());
    EXPECT_EQ(a->getPen(), b->getPen());
    EXPECT_EQ(document->getPaint().getColors().size(), 1U);
}

TEST(Paint, OfManyColoursKeepsEachApart) {
    std::string body;
    constexpr int kCount = 5000;
    for (int i = 0; i < kCount; ++i) {
        char color[8];
        std::snprintf(color, sizeof color, "#%06x", 0x101010 + i * 37);
        body += "<rect id='r" + std::to_string(i) + "' fill='" + color + "' stroke='" + color + "'/>";
    }
    const auto document = readBody(body);
    EXPECT_EQ(document->getPaint().getColors().size(), std::size_t{kCount});
    for (int i = 0; i < kCount; i += 499) {
        const AObject* object = document->findObject("r" + std::to_string(i));
        const auto* solid = dynamic_cast<const ASolidBrushItem*>(object->getBrush()->getBrushItem());
        const unsigned rgb = static_cast<unsigned>(0x101010 + i * 37);
        const COLORREF expected = (rgb & 0xff) << 16 | (rgb & 0xff00) | rgb >> 16;
        EXPECT_EQ(solid->getColorItem()->getDisplayColor(), expected);
        EXPECT_EQ(object->getPen()->getPenItem()->getColorItem(), solid->getColorItem());
    }
}

TEST(Swatch, ShowsItsStopsColour) {
    const auto display = [](const std::string& stop) {
        const auto document =
            readBody("<style>.w{stop-color:lime}</style><linearGradient id='s' color='blue'>" + stop +
                     "</linearGradient><rect id='a' fill='url(#s)'/>");
        const auto* solid =
            dynamic_cast<const ASolidBrushItem*>(document->findObject("a")->getBrush()->getBrushItem());
        return solid->getColorItem()->getDisplayColor();
    };
    EXPECT_EQ(display("<stop/>"), 0x000000U);
    EXPECT_EQ(display("<stop stop-color='red'/>"), 0x0000ffU);
    EXPECT_EQ(display("<stop style='stop-color:red'/>"), 0x0000ffU);
    EXPECT_EQ(display("<stop class='w'/>"), 0x00ff00U);
    EXPECT_EQ(display("<stop stop-color='currentColor'/>"), 0xff0000U);
}

TEST(Swatch, IsSharedByTheGradientsThatUseIt) {
    const auto document = readBody(
        "<linearGradient id='s'><stop stop-color='red'/></linearGradient><linearGradient id='g' href='#s'/>"
        "<linearGradient id='h' href='#s'/><rect id='a' fill='url(#g)'/><rect id='b' fill='url(#h)'/>");
    EXPECT_EQ(document->findObject("a")->getBrush(), document->findObject("b")->getBrush());
}

TEST(GradientBrush, HasTheStopsThatItsSampleShows) {
    const auto stops = [](const std::string& gradients) {
        const auto document = readBody("<style>.w{stop-color:lime;stop-opacity:.5}</style>" + gradients +
                                       "<rect id='a' fill='url(#g)'/>");
        const auto* item =
            dynamic_cast<const AGradientBrushItem*>(document->findObject("a")->getBrush()->getBrushItem());
        std::ostringstream told;
        for (const AGradientStop& stop : item->getStops())
            told << stop.offset << ' ' << std::hex << stop.color.getColorRef() << std::dec << ' '
                 << stop.color.getOpacity() << "; ";
        return told.str();
    };
    EXPECT_EQ(
        stops("<linearGradient id='g' color='blue'><stop stop-color='red'/><stop offset='50%' class='w'/>"
              "<stop offset='.25' stop-color='currentColor'/></linearGradient>"),
        "0 ff 1; 0.5 ff00 0.5; 0.5 ff0000 1; ");
    EXPECT_EQ(stops("<radialGradient id='g' href='#s'/><linearGradient id='s'><stop stop-color='red'/>"
                    "<stop offset='7' stop-color='white'/></linearGradient>"),
              "0 ff 1; 1 ffffff 1; ")
        << "another gradient's, which end at 1";
    EXPECT_EQ(stops("<linearGradient id='g'/>"), "") << "none at all";
}

}  // namespace

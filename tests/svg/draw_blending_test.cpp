// mix-blend-mode, what it blends with, and what isolates.
#include "canvas/image.h"
#include "filter.h"
#include "formats/svg/values/blend_mode.h"
#include "kzcore/view/view.h"
#include "picture.h"
#include "support.h"
#include "support/blend_modes.h"

namespace {

using namespace svg_test;

constexpr std::uint32_t kOrange = 0xff8000;
constexpr std::uint32_t kMint = 0x80ff80;
// What multiplying those gives: only what both let through.
constexpr std::uint32_t kProduct = 0x808000;

// Orange over the left half of the page, below everything.
const std::string kBelow = "<rect width='100' height='100' fill='#ff8000'/>";
const std::string kMultiply = " style='mix-blend-mode:multiply' ";
// Mint, over the whole page, with what else an element says.
std::string mint(const std::string& attributes) {
    return "<rect width='200' height='100' fill='#80ff80' " + attributes + "/>";
}

std::uint32_t colorOver(const std::string& content) {
    return drawBody(kBelow + content).at(50, 50);
}

TEST(DrawBlending, EveryModeHasItsName) {
    for (const test::BlendMode& one : test::kBlendModes) {
        const std::string style = std::string("style='mix-blend-mode: ") + one.name + "'";
        const Picture picture = drawBody(
            "<rect width='200' height='100' fill='#336699'/>"
            "<rect width='100' height='100' fill='#cc9933' " +
            style + "/>");
        EXPECT_COLOR(picture, 50, 50, blendedPixel(one.mode, 0xffcc9933, 0xff336699) & 0xffffff) << one.name;
        EXPECT_EQ(picture.at(150, 50), 0x336699U) << one.name;
    }
}

TEST(DrawBlending, EveryKindOfElementBlends) {
    AImage image(1, 1);
    image.at(0, 0) = 0xff80ff80;
    const std::string bytes = encodePng(image);
    std::string data;
    for (const char c : bytes) {
        char digits[8];
        std::snprintf(digits, sizeof digits, "%%%02x", static_cast<unsigned char>(c));
        data += digits;
    }
    const std::string elements[] = {
        "<rect width='200' height='100' fill='#80ff80'" + kMultiply + "/>",
        "<path d='M0 50H200' stroke='#80ff80' stroke-width='40'" + kMultiply + "/>",
        "<g" + kMultiply + ">" + mint("") + "</g>",
        "<svg" + kMultiply + ">" + mint("") + "</svg>",
        "<a" + kMultiply + ">" + mint("") + "</a>",
        "<defs>" + mint("id='m'") + "</defs><use href='#m'" + kMultiply + "/>",
        "<defs>" + mint("id='m'" + kMultiply) + "</defs><use href='#m'/>",
        "<symbol id='m'" + kMultiply + ">" + mint("") + "</symbol><use href='#m'/>",
        "<g inkscape:groupmode='layer' style='mix-blend-mode:multiply;display:inline'>" + mint("") + "</g>",
        "<image width='200' height='100' preserveAspectRatio='none' href='data:image/png," + data + "'" +
            kMultiply + "/>"};
    for (const std::string& element : elements) {
        const Picture picture = drawBody(kBelow + element);
        EXPECT_COLOR(picture, 50, 50, kProduct) << element;
        EXPECT_COLOR(picture, 150, 50, kMint) << element;
    }
}

TEST(DrawBlending, TextBlends) {
    const Picture picture =
        drawBody(kBelow + "<text x='-200' y='150' font-size='300' font-weight='bold' fill='#80ff80'" +
                 kMultiply + ">MMMMM</text>");
    std::size_t blended = 0;
    for (int y = 0; y < 100; ++y) {
        for (int x = 0; x < 100; ++x) {
            blended += picture.at(x, y) == kProduct || picture.at(x, y) == (kProduct | 0x000100) ? 1 : 0;
            EXPECT_NE(picture.at(x, y), kMint);
        }
    }
    EXPECT_GT(blended, 100U);
}

TEST(DrawBlending, ItIsAPropertyOfStylesAndNoAttribute) {
    EXPECT_EQ(colorOver(mint("mix-blend-mode='multiply'")), kMint);
    const auto sheet = [](const std::string& rule) {
        return drawBody("<style>.m{" + rule + "}</style>" + kBelow + mint("class='m'"));
    };
    EXPECT_COLOR(sheet("mix-blend-mode:multiply"), 50, 50, kProduct);
    EXPECT_COLOR(sheet("MIX-BLEND-MODE : Multiply"), 50, 50, kProduct);
    EXPECT_COLOR(sheet("mix-blend-mode:multiply !important;mix-blend-mode:screen"), 50, 50, kProduct);
    EXPECT_EQ(sheet("mix-blend-mode:normal").at(50, 50), kMint);
}

TEST(DrawBlending, UnknownWordsChangeNothing) {
    EXPECT_EQ(colorOver(mint("style='mix-blend-mode:plaid'")), kMint);
    EXPECT_COLOR(drawBody(kBelow + mint("style='mix-blend-mode:multiply;mix-blend-mode:plaid'")), 50, 50,
                 kProduct);
    EXPECT_EQ(colorOver(mint("style='mix-blend-mode:multiply;mix-blend-mode:initial'")), kMint);
}

TEST(DrawBlending, ItIsNotInheritedUnlessAskedFor) {
    // Within the group, mint twice: multiplied with itself only when the inner one blends as well.
    const auto inGroup = [](const std::string& style) {
        return drawBody("<g" + kMultiply + ">" + mint("") + mint(style) + "</g>");
    };
    EXPECT_COLOR(inGroup(""), 50, 50, kMint);
    EXPECT_COLOR(inGroup("style='mix-blend-mode:inherit'"), 50, 50, 0x40ff40);
}

TEST(DrawBlending, AGroupBlendsAsOnePicture) {
    // The content covers itself first: what lies below in the group does not show.
    const Picture picture =
        drawBody(kBelow + "<g" + kMultiply + "><rect width='100' height='100'/>" + mint("") + "</g>");
    EXPECT_COLOR(picture, 50, 50, kProduct);
}

TEST(DrawBlending, PlainGroupsDoNotIsolate) {
    const std::string content = mint(kMultiply) + "</g>";
    for (const char* group :
         {"<g>", "<g transform='scale(1 2)'>", "<g fill='red'>", "<g opacity='1'>",
          "<g style='mix-blend-mode:normal'>", "<g style='isolation:auto'>", "<g isolation='isolate'>"}) {
        EXPECT_COLOR(drawBody(kBelow + group + content), 50, 50, kProduct) << group;
    }
}

TEST(DrawBlending, WhatIsPaintedAsAPictureOfItsOwnIsolates) {
    const std::string defs =
        "<clipPath id='c'><rect width='200' height='100'/></clipPath>"
        "<clipPath id='t'><text y='100' font-size='300'>MM</text><rect width='200' height='100'/></clipPath>"
        "<mask id='m'><rect width='200' height='100' fill='white'/></mask>"
        "<filter id='f'><feOffset/></filter>";
    const std::string content = mint(kMultiply) + "</g>";
    for (const char* group :
         {"<g style='isolation:isolate'>", "<g clip-path='url(#c)'>", "<g clip-path='url(#t)'>",
          "<g clip-path='url(#missing)'>", "<g mask='url(#m)'>", "<g filter='url(#f)'>",
          "<g style='mix-blend-mode:darken;fill:red'>"}) {
        const Picture picture = drawBody(defs + kBelow + group + content);
        const bool darkens = std::string(group).find("darken") != std::string::npos;
        EXPECT_COLOR(picture, 50, 50, darkens ? 0x808000U : kMint) << group;
        EXPECT_COLOR(picture, 150, 50, kMint) << group;
    }
    // Half of mint over orange, not half of their product.
    EXPECT_COLOR(drawBody(kBelow + "<g opacity='.5'>" + content), 50, 50, 0xc0c040);
}

TEST(DrawBlending, WithinAnIsolatedGroupContentBlends) {
    for (const char* group : {"<g style='isolation:isolate'>", "<g opacity='.999'>",
                              "<g style='mix-blend-mode:normal;isolation:isolate'>"}) {
        const Picture picture = drawBody(group + kBelow + mint(kMultiply) + "</g>");
        EXPECT_COLOR(picture, 50, 50, kProduct) << group;
        EXPECT_COLOR(picture, 150, 50, kMint) << group;
    }
}

TEST(DrawBlending, ThePaperIsNotPartOfTheDrawing) {
    // On white the difference would be cyan, and dodging would burn to white.
    const Picture picture = drawBody(
        "<rect width='100' height='100' fill='red' style='mix-blend-mode:difference'/>"
        "<rect x='100' width='100' height='100' fill='red' style='mix-blend-mode:color-dodge'/>");
    EXPECT_EQ(picture.at(50, 50), 0xff0000U);
    EXPECT_EQ(picture.at(150, 50), 0xff0000U);
    // What shows through lets the paper through, and no more than that.
    EXPECT_COLOR(drawBody("<rect width='100' height='100' fill='red' fill-opacity='.5'"
                          " style='mix-blend-mode:difference'/>"),
                 50, 50, 0xff8080);
}

TEST(DrawBlending, ThePaperStaysOutWhenTheNameIsInCapitals) {
    for (const char* name : {"MIX-BLEND-MODE", "Mix-Blend-Mode"}) {
        const Picture picture = drawBody("<rect width='100' height='100' fill='red' style='" +
                                         std::string(name) + ":difference'/>");
        EXPECT_EQ(picture.at(50, 50), 0xff0000U) << name;
    }
}

TEST(DrawBlending, TheRootItselfBlendsWithNothing) {
    const auto document = readText(
        "<svg xmlns='http://www.w3.org/2000/svg' width='200' height='100' style='mix-blend-mode:difference'>"
        "<rect width='200' height='100' fill='red'/></svg>");
    EXPECT_EQ(Picture(*document).at(50, 50), 0xff0000U);
}

TEST(DrawBlending, ATileOfAPatternBlendsWithinTheTile) {
    const Picture picture = drawBody(
        "<pattern id='p' width='40' height='40' patternUnits='userSpaceOnUse'>"
        "<rect width='20' height='40' fill='#ff8000'/>"
        "<rect width='40' height='40' fill='#80ff80' style='mix-blend-mode:multiply'/></pattern>" +
        kBelow + "<rect width='200' height='100' fill='url(#p)'/>");
    EXPECT_COLOR(picture, 10, 50, kProduct);
    EXPECT_COLOR(picture, 30, 50, kMint);
}

TEST(DrawBlending, OpacityMaskClipAndFilterComeBeforeBlending) {
    EXPECT_COLOR(drawBody(kBelow + mint("style='mix-blend-mode:multiply;opacity:.5'")), 50, 50, 0xc08000);
    const std::string defs =
        "<clipPath id='c'><rect width='200' height='60'/></clipPath>"
        "<mask id='m'><rect width='200' height='60' fill='white'/></mask>"
        "<filter id='f' x='0' y='0' width='1' height='.6'><feFlood flood-color='#80ff80'/></filter>";
    for (const char* effect : {"clip-path='url(#c)'", "mask='url(#m)'", "filter='url(#f)'"}) {
        for (const std::string& element :
             {mint(effect + kMultiply), "<g " + (effect + kMultiply) + ">" + mint("") + "</g>"}) {
            const Picture picture = drawBody(defs + kBelow + element);
            EXPECT_COLOR(picture, 50, 50, kProduct) << element;
            EXPECT_COLOR(picture, 150, 50, kMint) << element;
            EXPECT_EQ(picture.at(50, 70), kOrange) << element;
        }
    }
}

TEST(DrawBlending, FillAndStrokeBlendAsOne) {
    // The stroke covers the fill; it is not multiplied with it.
    const Picture picture =
        drawBody(kBelow + "<path d='M0 0H200V100H0z' fill='blue' stroke='#80ff80' stroke-width='100'" +
                 kMultiply + "/>");
    EXPECT_COLOR(picture, 50, 20, kProduct);
}

TEST(DrawBlending, WhatTheViewFilterHidesDoesNotBlend) {
    const auto document =
        readBody(kBelow + "<path d='M20 20H80V80H20z' fill='blue' stroke='#80ff80' stroke-width='20'" +
                 kMultiply + "/>");
    EXPECT_COLOR(Picture(*document), 50, 50, 0x000000);
    const Picture withoutFill(*document, new HideByName({"blue"}));
    EXPECT_EQ(withoutFill.at(50, 50), kOrange);
    EXPECT_COLOR(withoutFill, 20, 50, kProduct);
    const Picture onNothing(*document, new HideByName({"#ff8000"}));
    EXPECT_EQ(onNothing.at(50, 50), 0x0000ffU);
    EXPECT_EQ(onNothing.at(20, 50), kMint);
    EXPECT_EQ(onNothing.at(5, 5), kWhite);
}

TEST(DrawBlending, DrawingsThatOnlySayNormalNeedNoGroups) {
    EXPECT_FALSE(svg::asksForBlending(drawing(mint("style='fill:red'"))));
    EXPECT_FALSE(svg::asksForBlending("a{mix-blend-mode:normal} b{mix-blend-mode : Normal;isolation:auto}"));
    EXPECT_FALSE(svg::asksForBlending("mix-blend-mode"));
    EXPECT_FALSE(svg::asksForBlending("mix-blend-mode: "));
    EXPECT_TRUE(svg::asksForBlending("mix-blend-mode:normal;mix-blend-mode:multiply"));
    EXPECT_TRUE(svg::asksForBlending("MIX-BLEND-MODE:\nhue"));
    EXPECT_TRUE(svg::asksForBlending("mix-blend-mode:inherit"));
}

TEST(DrawBlending, ManyBlendingElementsEachTouchTheirPixels) {
    std::string body = kBelow;
    for (int i = 0; i < 40; ++i)
        body += "<rect x='" + std::to_string(i * 5) + "' width='3' height='100' fill='#80ff80'" + kMultiply +
                "/>";
    const Picture picture = drawBody(body);
    for (int i = 0; i < 40; ++i) {
        EXPECT_COLOR(picture, i * 5 + 1, 50, i < 20 ? kProduct : kMint);
        EXPECT_EQ(picture.at(i * 5 + 4, 50), i < 20 ? kOrange : kWhite);
    }
}

TEST(DrawBlending, DeeplyNestedBlendsEnd) {
    std::string body = kBelow;
    for (int i = 0; i < 200; ++i) body += "<g" + kMultiply + ">";
    body += mint("");
    for (int i = 0; i < 200; ++i) body += "</g>";
    EXPECT_COLOR(drawBody(body + "<rect x='190' width='10' height='10' fill='blue'/>"), 195, 5, 0x0000ff);
}

}  // namespace

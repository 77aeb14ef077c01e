// A display list drawn, beside the same drawing drawn directly by its format.
#include <gtest/gtest.h>

#include <random>

#include "display/pictures.h"
#include "kzcore/display/tiled_picture.h"

namespace display_test {
namespace {

// Alike to the eye: an outline may be placed a 256th of a pixel apart, as its transforms are multiplied in another
// order.
void expectSamePicture(const std::string& text, const AAffine& toPixels, AViewFilter* filter = nullptr) {
    Shown shown(text, filter);
    const AImage direct = shown.drawnDirectly(toPixels);
    const AImage listed = shown.drawnFromList(toPixels);
    EXPECT_LE(differentPixels(direct, listed, 3), direct.pixels().size() / 2000) << text;
}

void expectSamePicture(const std::string& body) {
    expectSamePicture(svg_test::drawing(body), AAffine());
}

}  // namespace

std::vector<double> pointsOf(const ADisplayList& list, const ADisplayOutline& outline) {
    APath path;
    list.readOutline(outline, path);
    std::vector<double> points;
    for (const AFPoint& from : path.points()) {
        const AFPoint to = list.transform(outline.transform).apply(from);
        points.insert(points.end(), {to.x, to.y});
    }
    return points;
}

void expectSameList(const ADisplayList& a, const ADisplayList& b) {
    ASSERT_EQ(a.entryCount(), b.entryCount());
    ASSERT_EQ(a.groupCount(), b.groupCount());
    EXPECT_EQ(a.isOnePicture(), b.isOnePicture());
    EXPECT_EQ(a.referItems(), b.referItems());
    for (std::uint32_t i = 0; i < a.objectCount(); ++i) {
        ASSERT_EQ(a.fillItem(i), b.fillItem(i)) << i;
        ASSERT_EQ(a.strokeItem(i), b.strokeItem(i)) << i;
    }
    for (std::uint32_t i = 0; i < a.groupCount(); ++i) {
        const ADisplayGroup& one = a.group(i);
        const ADisplayGroup& other = b.group(i);
        ASSERT_EQ(one.parent, other.parent);
        ASSERT_EQ(one.firstEntry, other.firstEntry);
        ASSERT_EQ(one.endEntry, other.endEntry);
        ASSERT_EQ(one.clip == kNoGroup, other.clip == kNoGroup);
        ASSERT_EQ(one.picture, other.picture);
        if (one.clip == kNoGroup) continue;
        ASSERT_EQ(pointsOf(a, a.clip(one.clip).outline), pointsOf(b, b.clip(other.clip).outline));
    }
    for (std::uint32_t i = 0; i < a.entryCount(); ++i) {
        ASSERT_EQ(a.entry(i).object, b.entry(i).object) << i;
        ASSERT_EQ(a.entry(i).group, b.entry(i).group) << i;
        ASSERT_EQ(a.box(i), b.box(i)) << i;
        ASSERT_EQ(a.endOfItems(i), b.endOfItems(i)) << i;
        for (std::uint32_t k = a.entry(i).firstItem; k < a.endOfItems(i); ++k) {
            const ADisplayItem& one = a.item(k);
            const ADisplayItem& other = b.item(k);
            ASSERT_EQ(pointsOf(a, one.outline), pointsOf(b, other.outline)) << i;
            ASSERT_EQ(a.paint(one.paint).color, b.paint(other.paint).color) << i;
            ASSERT_EQ(a.paint(one.paint).gradient, b.paint(other.paint).gradient) << i;
            ASSERT_EQ(one.pen, other.pen) << i;
            ASSERT_EQ(one.part, other.part) << i;
        }
    }
}

// Made by one thread and by two, they are the same, and so is the picture.
void expectSameInHalves(const std::string& text) {
    const Shown shown(text);
    const auto one = makeDisplayList(*shown.document, 1);
    const auto two = makeDisplayList(*shown.document, 2);
    expectSameList(*one, *two);
    const AAffine toPixels = AAffine::scaling(1.3);
    const AShownPaint all;
    EXPECT_EQ(drawTiled(*one, all, toPixels, 200, 100, 64).pixels(),
              drawTiled(*two, all, toPixels, 200, 100, 64).pixels());
}

TEST(DisplayList, MadeInHalvesIsTheOneThatOneThreadMakes) {
    std::mt19937 random(15);
    for (int i = 0; i < 40; ++i) {
        SCOPED_TRACE(i);
        expectSameInHalves(svg_test::randomDrawing(random));
    }
    std::string many;
    for (int i = 0; i < 60; ++i) {
        const std::string at = std::to_string(i);
        many += "<g transform='translate(" + at + ")'><text y='" + at + "' stroke='red'>ring " + at +
                "</text><rect width='" + at + "' height='9' fill='url(#g)'/></g>";
    }
    const std::string gradient =
        "<linearGradient id='g'><stop stop-color='red'/><stop offset='1'/></linearGradient>";
    expectSameInHalves(svg_test::drawing(gradient + many));
    // Groups around both halves, or what is drawn as a whole.
    for (const char* const style :
         {"opacity='.5'", "display='none'", "mix-blend-mode='screen'", "clip-path='url(#c)'",
          "filter='url(#f)'", "style='mix-blend-mode:screen'"}) {
        SCOPED_TRACE(style);
        expectSameInHalves(svg_test::drawing(gradient +
                                             "<clipPath id='c'><circle r='60'/></clipPath><filter id='f'>"
                                             "<feGaussianBlur stdDeviation='1'/></filter><g " +
                                             style + ">" + many + "</g>"));
    }
    expectSameInHalves("<svg xmlns='http://www.w3.org/2000/svg' opacity='.5' style='background:lime'>" +
                       many + "</svg>");
}

TEST(DisplayList, DrawsShapes) {
    expectSamePicture(
        "<rect x='5' y='5' width='50' height='20' fill='red' stroke='blue' stroke-width='3'/>"
        "<circle cx='100' cy='50' r='30' fill='lime'/><path d='M10 60c30 0 40 30 10 30z'/>"
        "<line x1='0' y1='0' x2='200' y2='100' stroke='black' stroke-dasharray='5 3'/>");
}

TEST(DisplayList, DrawsTexts) {
    expectSamePicture(
        "<text x='10' y='50' font-size='30' fill='navy'>Har<tspan fill='red'>bour</tspan></text>");
}

TEST(DisplayList, DrawsTextsWhoseLettersHavePlacesOfTheirOwn) {
    expectSamePicture(
        "<text x='20' y='40' font-size='24' stroke='red' text-decoration='underline'>one ring</text>"
        "<g transform='rotate(20) skewX(10)'><text x='60' y='40' font-size='20' letter-spacing='3' "
        "fill='lime' "
        "stroke='black' vector-effect='non-scaling-stroke'>ring</text></g>"
        "<text x='110' y='90' rotate='10 40' textLength='80' lengthAdjust='spacingAndGlyphs'>grin</text>"
        "<path id='p' d='M10 90q40 -40 90 0' fill='none'/>"
        "<text font-size='12'><textPath href='#p'>along the path</textPath></text>"
        "<text x='180' y='10' writing-mode='tb' font-size='14'>down</text>");
}

TEST(DisplayList, DrawsGradients) {
    expectSamePicture(
        "<linearGradient id='g'><stop stop-color='red'/><stop offset='1' stop-color='blue'/>"
        "</linearGradient><rect width='200' height='50' fill='url(#g)'/>"
        "<radialGradient id='r'><stop stop-color='red'/><stop offset='1' stop-color='lime'/>"
        "</radialGradient><circle cx='50' cy='75' r='25' fill='url(#r)' fill-opacity='.5'/>");
}

TEST(DisplayList, DrawsGroupsThatShowThrough) {
    expectSamePicture(
        "<rect width='200' height='50' fill='lime'/><g opacity='.5'>"
        "<rect x='10' y='10' width='80' height='80' fill='red'/>"
        "<g opacity='.5'><circle cx='90' cy='50' r='40' fill='blue'/></g></g>"
        "<rect x='120' y='20' width='40' height='60' fill='red' stroke='blue' stroke-width='9' "
        "opacity='.4'/>");
}

TEST(DisplayList, CutsWithClipPaths) {
    expectSamePicture(
        "<clipPath id='c'><circle cx='50' cy='50' r='40'/></clipPath>"
        "<g clip-path='url(#c)'><rect width='200' height='70' fill='red'/></g>"
        "<rect x='60' width='60' height='90' fill='blue' clip-path='url(#c)'/>"
        "<svg x='120' y='20' width='50' height='50'><circle r='45' fill='lime'/></svg>");
}

TEST(DisplayList, DrawsMarkersPatternsMasksFiltersAndImages) {
    expectSamePicture(
        "<marker id='m' markerWidth='9' markerHeight='9' refX='4' refY='4'><circle cx='4' cy='4' r='4' "
        "fill='red'/></marker><path d='M10 10h50v50' fill='none' stroke='black' marker-end='url(#m)' "
        "marker-start='url(#m)'/>"
        "<pattern id='p' width='10' height='10' patternUnits='userSpaceOnUse'><circle cx='5' cy='5' r='4' "
        "fill='blue'/></pattern><rect x='70' width='60' height='40' fill='url(#p)' stroke='red'/>"
        "<mask id='k'><rect width='200' height='80' fill='white' fill-opacity='.7'/></mask>"
        "<g mask='url(#k)'><rect x='140' y='10' width='50' height='80' fill='green'/></g>"
        "<filter id='f'><feGaussianBlur stdDeviation='4'/></filter>"
        "<g filter='url(#f)'><rect x='20' y='60' width='50' height='20' fill='red'/></g>"
        "<g transform='translate(60 50)'><rect width='30' height='30' fill='lime' filter='url(#f)'/></g>");
}

TEST(DisplayList, BlendsAsTheFormatDoes) {
    expectSamePicture(
        "<rect width='100' height='100' fill='red'/><g style='mix-blend-mode:multiply'>"
        "<circle cx='90' cy='50' r='40' fill='blue'/></g><rect x='150' width='30' height='30'/>");
}

TEST(DisplayList, DrawsRandomDrawingsAtRandomScales) {
    std::mt19937 random(4);
    for (int i = 0; i < 60; ++i) {
        const std::string text = svg_test::randomDrawing(random);
        const double scale = 0.3 + static_cast<double>(random() % 100) / 30;
        expectSamePicture(text, {scale, 0, 0, scale, -static_cast<double>(random() % 50), 3.25});
        if (HasFailure()) return;
    }
}

TEST(DisplayList, LeavesOutWhatAFilterRefuses) {
    const std::string text = svg_test::drawing(
        "<rect width='50' height='50' fill='red' stroke='blue' stroke-width='6'/>"
        "<rect x='60' width='50' height='50' fill='blue'/><text x='10' y='90' fill='red'>text</text>"
        "<g opacity='.5'><rect x='120' width='50' height='90' fill='red'/></g>"
        "<filter id='f'><feGaussianBlur stdDeviation='4'/></filter><g filter='url(#f)'>"
        "<rect x='60' y='60' width='50' height='20' fill='red'/><rect x='80' y='60' width='50' height='20' "
        "fill='blue'/></g>");
    for (const char* const color : {"red", "blue"})
        expectSamePicture(text, AAffine(), new RefusingFilter({color}));
}

TEST(DisplayList, AsksTheFilterOnceAboutEveryItem) {
    Shown shown(
        svg_test::drawing("<g fill='red'><rect width='9' height='9'/><rect width='8' height='9'/>"
                          "<rect width='7' height='9' stroke='blue'/></g>"));
    int asked = 0;
    const AShownPaint paint(*shown.list, [&](AReferItem*) {
        ++asked;
        return true;
    });
    EXPECT_EQ(asked, 2);
}

TEST(DisplayList, TellsWhatAChangeTouches) {
    Shown shown(
        svg_test::drawing("<rect x='10' y='10' width='20' height='20' fill='red'/>"
                          "<rect x='50' y='10' width='20' height='20' fill='blue'/>"));
    RefusingFilter filter({"red"});
    const AShownPaint all;
    const AShownPaint less(*shown.list, [&](AReferItem* item) { return filter.isVisible(item) != 0; });
    EXPECT_EQ(all.changes(*shown.list, all).size(), 0U);
    EXPECT_EQ(all.changes(*shown.list, less), (std::vector<ABox>{{10, 10, 30, 30}}));
    EXPECT_EQ(less.changes(*shown.list, all), (std::vector<ABox>{{10, 10, 30, 30}}));
}

TEST(DisplayList, ObjectsFarBelowAPixelDoNotVanish) {
    Shown shown(svg_test::drawing("<circle cx='100.05' cy='50.05' r='40' fill='black'/>"));
    const AImage image = shown.drawnFromList(AAffine::translation(9, 9) * AAffine::scaling(1e-5));
    EXPECT_NE(image.at(9, 9), 0xffffffU);
}

TEST(DisplayList, KeepsAnOutlineThatComesAgainOnce) {
    std::string symbol = "<defs><path id='s' d='M0 0";
    for (int i = 0; i < 40; ++i) symbol += "q1 2 3 " + std::to_string(i % 7) + "t-2 1";
    symbol += "z' stroke='blue'/></defs>";
    const auto uses = [&](int count) {
        std::string body = symbol;
        for (int i = 0; i < count; ++i)
            body += "<use href='#s' x='" + std::to_string(i * 3) + "' y='" + std::to_string(i) + "'/>";
        return svg_test::drawing(body);
    };
    const std::size_t once = Shown(uses(1)).list->outlineBytes();
    const Shown often(uses(50));
    EXPECT_GE(often.list->entryCount(), 50U);
    EXPECT_EQ(often.list->outlineBytes(), once);
    expectSamePicture(uses(50), AAffine::scaling(1.5));
}

TEST(DisplayList, KeepsTheLettersOfATextThatComesAgainOnce) {
    const auto texts = [](int count) {
        std::string body;
        for (int i = 0; i < count; ++i) {
            const std::string at = std::to_string(i);
            body += "<text x='" + at + "' y='" + std::to_string(i * 2) + "' fill='#" + at + at + at +
                    "' stroke='red'>harbour</text>";
        }
        return svg_test::drawing(body);
    };
    const Shown once(texts(1));
    const Shown often(texts(9));
    EXPECT_EQ(often.list->entryCount(), 9U);
    EXPECT_GT(once.list->outlineBytes(), 0U);
    EXPECT_EQ(often.list->outlineBytes(), once.list->outlineBytes());
    EXPECT_LT(often.list->bytes() - once.list->bytes(), 8 * 600U);
    expectSamePicture(texts(9), AAffine::scaling(1.5));
}

TEST(DisplayList, TakesFewBytesForAnObject) {
    std::string body;
    for (int i = 0; i < 2000; ++i) {
        const std::string x = std::to_string(i % 190);
        body += "<rect x='" + x + "' y='3' width='5' height='5' fill='#" + std::to_string(100000 + i) +
                "' stroke='blue'/>";
    }
    Shown shown(svg_test::drawing(body));
    EXPECT_LT(shown.list->bytes(), 250U * 2000);
}

}  // namespace display_test

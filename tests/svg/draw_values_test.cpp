// What drawings ask for that is broken, new or rarely used: values that are no values, transforms of style sheets,
// paints of what stands around, conditions, pictures inside the file, filters.
#include "kzcore/document/object.h"
#include "kzcore/document/refer_item.h"
#include "picture.h"
#include "support.h"

namespace {

using namespace svg_test;

// A rectangle of 100 by 80 from 20, 10.
std::string box(const std::string& attributes) {
    return "<rect x='20' y='10' width='100' height='80' " + attributes + "/>";
}

TEST(DrawValues, ColoursFollowedBySomethingElseAreNoColours) {
    EXPECT_COLOR(drawBody(box("fill='rgb(255,0,0) foo'")), 50, 50, 0);
    EXPECT_COLOR(drawBody(box("fill='#ff0000;'")), 50, 50, 0);
    EXPECT_COLOR(drawBody(box("fill='#ff0000 icc-color(a, 0.1)'")), 50, 50, kRed);
}

TEST(DrawValues, CommasAskForComponentsOfOneKind) {
    EXPECT_COLOR(drawBody(box("fill='rgb(100%,0,0)'")), 50, 50, 0);
    EXPECT_COLOR(drawBody(box("fill='hsl(120,100,50)'")), 50, 50, 0);
    EXPECT_COLOR(drawBody(box("fill='rgb(100% 0 0)'")), 50, 50, kRed);
    EXPECT_COLOR(drawBody(box("fill='rgb(255,0,0'")), 50, 50, kRed);
}

TEST(DrawValues, ATransformThatEndsWithACommaIsNone) {
    EXPECT_COLOR(drawBody(box("transform='translate(60,0,)' fill='red'")), 30, 50, kRed);
    EXPECT_COLOR(drawBody(box("transform='translate(60,0)' fill='red'")), 30, 50, kWhite);
}

TEST(DrawValues, APaintOrderNamesEveryPartOnce) {
    const std::string thick = "fill='lime' stroke='red' stroke-width='20' paint-order=";
    EXPECT_COLOR(drawBody(box(thick + "'stroke'")), 25, 50, kLime);
    EXPECT_COLOR(drawBody(box(thick + "'stroke foo'")), 25, 50, kRed);
    EXPECT_COLOR(drawBody(box(thick + "'stroke fill stroke'")), 25, 50, kRed);
}

TEST(DrawValues, StopsFloodsAndOffsetsTakeOnlyWhatTheyKnow) {
    const auto stops = [](const std::string& first) {
        return drawBody("<linearGradient id='g'><stop " + first + "/><stop offset='1' stop-color='red'/>" +
                        "</linearGradient>" + box("fill='url(#g)'"));
    };
    EXPECT_COLOR(stops("stop-color='url(#x)'"), 21, 50, 0x020000);
    EXPECT_COLOR(stops("stop-color='none'"), 21, 50, 0x020000);
    // A length is no offset.
    EXPECT_COLOR(stops("offset='1px' stop-color='blue'"), 21, 50, 0x0200fc);
}

TEST(DrawValues, DashesThatEndWithACommaAreNone) {
    const std::string line = "<path d='M0 50H200' stroke='red' stroke-width='20' stroke-dasharray=";
    EXPECT_COLOR(drawBody(line + "'20 20'/>"), 30, 50, kWhite);
    EXPECT_COLOR(drawBody(line + "'20 20,'/>"), 30, 50, kRed);
}

TEST(DrawValues, DashesAreMeasuredInTheLengthThatAPathSays) {
    const std::string line = "<path d='M0 50H200' stroke='red' stroke-width='20' stroke-dasharray='1' ";
    const Picture scaled = drawBody(line + "pathLength='4'/>");
    EXPECT_COLOR(scaled, 25, 50, kRed);
    EXPECT_COLOR(scaled, 75, 50, kWhite);
    EXPECT_COLOR(drawBody(line + "pathLength='0'/>"), 75, 50, kRed);
}

TEST(DrawValues, AServerThatCannotPaintGivesWayToTheColourBehindIt) {
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

TEST(DrawValues, AnEmptyViewBoxHidesWhatHasIt) {
    EXPECT_COLOR(drawBody("<svg viewBox='0 0 0 10'><rect width='50' height='50'/></svg>"), 20, 20, kWhite);
    EXPECT_COLOR(
        drawBody("<pattern id='p' width='1' height='1' viewBox='0 0 0 0'><rect width='99' height='99'/>"
                 "</pattern>" +
                 box("fill='url(#p)'")),
        50, 50, kWhite);
}

TEST(DrawValues, AFocusOutsideItsCircleMakesACone) {
    const Picture picture = drawBody(
        "<radialGradient id='g' gradientUnits='userSpaceOnUse' cx='60' cy='50' r='20' fx='160'>"
        "<stop stop-color='blue'/><stop offset='1' stop-color='red'/></radialGradient>"
        "<rect width='200' height='100' fill='url(#g)'/>");
    EXPECT_COLOR(picture, 190, 50, kWhite);
    EXPECT_COLOR(picture, 20, 50, kRed);
    EXPECT_COLOR(picture, 160, 90, kWhite);
}

TEST(DrawValues, EqualCirclesOfAGradientShowItsEnds) {
    const Picture picture = drawBody(
        "<radialGradient id='g' fr='0.5'><stop stop-color='blue'/>"
        "<stop offset='1' stop-color='red'/></radialGradient>" +
        box("fill='url(#g)'"));
    EXPECT_COLOR(picture, 70, 50, kBlue);
    EXPECT_COLOR(picture, 22, 12, kRed);
}

TEST(DrawTransforms, OfStyleSheetsHaveUnits) {
    const auto moved = [](const std::string& transform) {
        return drawBody("<rect width='20' height='20' fill='red' style='transform:" + transform + "'/>");
    };
    EXPECT_COLOR(moved("translate(100px,50%)"), 110, 60, kRed);
    EXPECT_COLOR(moved("translateX(100px) scaleY(4)"), 110, 70, kRed);
    EXPECT_COLOR(moved("translate(50px, 50px) rotate(0.5turn)"), 40, 40, kRed);
    EXPECT_COLOR(moved("matrix(1,0,0,1,100,0)"), 110, 10, kRed);
    EXPECT_COLOR(moved("scale(400%)"), 70, 70, kRed);
    EXPECT_COLOR(moved("skew(45deg)"), 30, 18, kRed);
    // Without units, or without a comma, it is none.
    EXPECT_COLOR(moved("translate(100 0)"), 10, 10, kRed);
    EXPECT_COLOR(moved("rotate(90)"), 10, 10, kRed);
}

TEST(DrawTransforms, OfStyleSheetsComeBeforeThoseOfAttributes) {
    const std::string rest = "<rect width='20' height='20' fill='red' transform='translate(100)' ";
    EXPECT_COLOR(drawBody(rest + "style='transform:none'/>"), 10, 10, kRed);
    EXPECT_COLOR(drawBody(rest + "style='transform:foo'/>"), 110, 10, kRed);
    EXPECT_COLOR(
        drawBody(
            "<style>g{transform:translate(50px)}</style><g><rect width='20' height='20' fill='red'/></g>"),
        60, 10, kRed);
}

TEST(DrawTransforms, TurnAboutTheirOrigin) {
    const auto turned = [](const std::string& origin) {
        return drawBody("<rect x='100' y='40' width='60' height='20' fill='red' transform='rotate(180)' " +
                        origin + "/>");
    };
    EXPECT_COLOR(turned("transform-origin='100 50'"), 50, 50, kRed);
    EXPECT_COLOR(turned("transform-origin='center'"), 50, 50, kRed);
    EXPECT_COLOR(turned("transform-origin='50% 50%'"), 50, 50, kRed);
    EXPECT_COLOR(turned("transform-origin='right bottom'"), 290 - 200, 50, kWhite);
    EXPECT_COLOR(turned("style='transform-box:fill-box;transform-origin:left'"), 50, 50, kRed);
    EXPECT_COLOR(turned("style='transform-box:fill-box;transform-origin:center'"), 150, 50, kRed);
}

TEST(DrawTransforms, OfAGroupTurnAboutItsOwnBox) {
    const Picture picture = drawBody(
        "<g style='transform-box:fill-box;transform-origin:center;transform:rotate(180deg)'>"
        "<rect width='20' height='20' fill='red'/><rect x='180' y='80' width='20' height='20' "
        "fill='blue'/></g>");
    EXPECT_COLOR(picture, 10, 10, kBlue);
    EXPECT_COLOR(picture, 190, 90, kRed);
}

TEST(DrawTransforms, BoxesInBoxesWithoutEndAreDrawnQuickly) {
    std::string body;
    for (int i = 0; i < 200; ++i) body += "<g style='transform-box:fill-box;transform:translate(1%)'>";
    body += "<rect width='20' height='20' fill='red'/>";
    for (int i = 0; i < 200; ++i) body += "</g>";
    EXPECT_COLOR(drawBody(body), 10, 10, kRed);
}

TEST(DrawTransforms, PlaceObjectsOfTheModelToo) {
    const auto document = readBody(
        "<g style='transform:translate(100px)'><rect id='a' x='1' width='10' height='10'/>"
        "<path id='b' d='M2 0h10v10z' style='transform:translateY(50px)'/></g>");
    const AFRect a = boundsOf(*document, "a");
    EXPECT_DOUBLE_EQ(a.left, 101);
    const AFRect b = boundsOf(*document, "b");
    EXPECT_DOUBLE_EQ(b.left, 102);
    EXPECT_DOUBLE_EQ(b.top, 50);
}

constexpr char kArrowHead[] =
    "<marker id='m' markerUnits='userSpaceOnUse' markerWidth='20' markerHeight='20' refX='10' refY='10'>"
    "<rect width='20' height='20' fill='context-stroke'/><rect x='6' y='6' width='8' height='8' "
    "fill='context-fill'/>"
    "</marker>";

TEST(DrawContextPaint, MarkersTakeThePaintsOfTheirShape) {
    const Picture picture = drawBody(std::string(kArrowHead) +
                                     "<path d='M50 50H150' fill='lime' stroke='blue' marker-start='url(#m)'/>"
                                     "<path d='M50 80H150' fill='none' stroke='red' marker-end='url(#m)'/>");
    EXPECT_COLOR(picture, 50, 50, kLime);
    EXPECT_COLOR(picture, 42, 42, kBlue);
    EXPECT_COLOR(picture, 150, 80, kRed);
}

TEST(DrawContextPaint, AGradientGoesOnFromMarkerToMarker) {
    const Picture picture = drawBody(
        "<linearGradient id='g' gradientUnits='userSpaceOnUse' x1='99' x2='101'><stop stop-color='red'/>"
        "<stop offset='1' stop-color='blue'/></linearGradient>" +
        std::string(kArrowHead) +
        "<path d='M50 50H150' stroke='url(#g)' marker-start='url(#m)' marker-end='url(#m)' opacity='0.99'/>");
    EXPECT_TRUE(hasColor(picture, 42, 42, 0xff0303, 4));
    EXPECT_TRUE(hasColor(picture, 158, 58, 0x0303ff, 4));
}

TEST(DrawContextPaint, UsesLendTheirPaintsToWhatTheyRepeat) {
    const auto document = readBody(
        "<defs><g id='a'><rect id='r' width='40' height='40' fill='context-fill' stroke='context-stroke' "
        "stroke-width='20'/></g><g id='b'><use href='#a' fill='context-stroke'/></g></defs>"
        "<use href='#a' x='20' y='20' fill='lime' stroke='blue'/><use href='#b' x='120' y='20' "
        "stroke='red'/>");
    const Picture picture(*document);
    EXPECT_COLOR(picture, 40, 40, kLime);
    EXPECT_COLOR(picture, 15, 40, kBlue);
    EXPECT_COLOR(picture, 140, 40, kRed);
}

TEST(DrawContextPaint, IsNothingWithoutAContext) {
    EXPECT_COLOR(drawBody("<g fill='red'>" + box("fill='context-fill'") + "</g>"), 50, 50, kWhite);
}

TEST(DrawConditions, HideWhatIsForOthersWhereverItStands) {
    EXPECT_COLOR(drawBody(box("systemLanguage='de' fill='red'")), 50, 50, kWhite);
    EXPECT_COLOR(drawBody(box("systemLanguage='de, en-GB' fill='red'")), 50, 50, kRed);
    EXPECT_COLOR(drawBody(box("systemLanguage='' fill='red'")), 50, 50, kWhite);
    EXPECT_COLOR(drawBody(box("requiredExtensions='' fill='red'")), 50, 50, kWhite);
    EXPECT_COLOR(drawBody("<g systemLanguage='de'>" + box("fill='red'") + "</g>"), 50, 50, kWhite);
    EXPECT_COLOR(drawBody("<g mask='url(#n)'><g systemLanguage='de'>" + box("fill='red'") + "</g></g>"), 50,
                 50, kWhite);
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

TEST(DrawMarkers, HaveEffectsOfTheirOwn) {
    const Picture picture = drawBody(
        "<marker id='m' opacity='0.5' markerUnits='userSpaceOnUse' markerWidth='20' markerHeight='20'>"
        "<rect width='20' height='20' fill='red'/></marker><path d='M50 50H150' marker-start='url(#m)'/>");
    EXPECT_COLOR(picture, 60, 60, 0xff8080);
}

std::string filteredBy(const std::string& primitives,
                       const std::string& shape = box("fill='lime' filter='url(#f)'"),
                       const std::string& attributes = "") {
    return "<filter id='f' color-interpolation-filters='sRGB' " + attributes + ">" + primitives +
           "</filter>" + shape;
}

TEST(DrawFilterValues, AFloodFillsWhatHasNoPaint) {
    const Picture picture =
        drawBody(filteredBy("<feFlood flood-color='red'/>", box("fill='none' filter='url(#f)'")));
    EXPECT_COLOR(picture, 50, 50, kRed);
}

TEST(DrawFilterValues, AStepWithoutARegionFillsThatOfItsInputs) {
    const Picture picture = drawBody(filteredBy(
        "<feFlood x='20' y='10' width='10' height='20' flood-color='red'/><feOffset dx='5'/><feTile/>"));
    EXPECT_COLOR(picture, 22, 15, kWhite);
    EXPECT_COLOR(picture, 27, 15, kRed);
    EXPECT_COLOR(picture, 32, 15, kWhite);
    EXPECT_COLOR(picture, 107, 75, kRed);
}

TEST(DrawFilterValues, NumbersWithSomethingBehindThemAreNone) {
    const auto at = [](const std::string& primitive, int x) {
        const Picture picture = drawBody(filteredBy(primitive));
        return picture.at(x, 50);
    };
    EXPECT_EQ(at("<feOffset dx='50%'/>", 22), kLime);
    EXPECT_EQ(at("<feGaussianBlur stdDeviation='9 9 9'/>", 118), kLime);
    EXPECT_EQ(at("<feColorMatrix type='saturate' values='0 0'/>", 50), kLime);
    EXPECT_EQ(at("<feComponentTransfer><feFuncG type='linear' slope='0foo'/></feComponentTransfer>", 50),
              kLime);
    EXPECT_EQ(at("<feComponentTransfer><feFuncG type='table' tableValues='0 x'/></feComponentTransfer>", 50),
              kLime);
}

TEST(DrawFilterValues, BrokenStepsShowNothing) {
    for (const char* const primitive :
         {"<feConvolveMatrix kernelMatrix='1 2'/>",
          "<feConvolveMatrix kernelMatrix='0 0 0 0 1 0 0 0 0' targetX='3'/>", "<feDiffuseLighting/>",
          "<feTurbulence baseFrequency='-1'/>", "<feFlood width='-5' flood-color='red'/>"}) {
        EXPECT_COLOR(drawBody(filteredBy(primitive)), 50, 50, kWhite) << primitive;
    }
}

TEST(DrawFilterValues, PaintsAndBackgroundsAreTheElementItself) {
    for (const char* const input : {"FillPaint", "StrokePaint", "BackgroundImage"})
        EXPECT_COLOR(drawBody(filteredBy("<feOffset in='" + std::string(input) + "'/>")), 50, 50, kLime);
}

TEST(DrawFilterValues, OneThatIsNotThereIsLeftOut) {
    EXPECT_COLOR(drawBody(filteredBy("<feFlood flood-color='red'/>", box("filter='url(#no) url(#f)'"))), 50,
                 50, kRed);
    EXPECT_COLOR(drawBody(box("fill='red' filter='url(#no)'")), 50, 50, kRed);
}

TEST(DrawFilterValues, FunctionsAskForUnits) {
    EXPECT_COLOR(drawBody(box("fill='red' filter='hue-rotate(90)'")), 50, 50, kRed);
    EXPECT_COLOR(drawBody(box("fill='red' filter='blur(9)'")), 119, 50, kRed);
}

TEST(DrawFilterValues, WorkAlongTheAxesOfATurnedElement) {
    // Sixteen pixels down the element are sixteen to the left in the picture.
    const Picture picture = drawBody(filteredBy("<feOffset dy='16'/>",
                                                "<rect width='40' height='40' fill='red' filter='url(#f)' "
                                                "transform='translate(100,20) rotate(90)'/>",
                                                "x='-1' y='-1' width='3' height='3'"));
    EXPECT_COLOR(picture, 92, 40, kWhite);
    EXPECT_COLOR(picture, 50, 40, kRed);
    // A flood fills the turned region, not the box around it.
    const Picture flood = drawBody(filteredBy("<feFlood flood-color='red'/>",
                                              "<rect x='-30' y='-30' width='60' height='60' filter='url(#f)' "
                                              "transform='translate(100,50) rotate(45)'/>",
                                              "x='0' y='0' width='1' height='1'"));
    EXPECT_COLOR(flood, 100, 50, kRed);
    EXPECT_COLOR(flood, 74, 24, kWhite);
}

constexpr char kInner[] =
    "data:image/svg+xml,%3Csvg xmlns=%22http://www.w3.org/2000/svg%22 viewBox=%220 0 20 10%22%3E"
    "%3Crect width=%2220%22 height=%2210%22 fill=%22blue%22/%3E%3Crect width=%2210%22 height=%2210%22 "
    "fill=%22red%22/%3E%3C/svg%3E";

TEST(DrawInnerDrawings, FillTheirImage) {
    const std::string href = " href='" + std::string(kInner) + "'/>";
    const Picture picture = drawBody("<image x='20' y='20' width='100' height='60'" + href);
    EXPECT_COLOR(picture, 30, 50, kRed);
    EXPECT_COLOR(picture, 110, 50, kBlue);
    EXPECT_COLOR(picture, 30, 22, kWhite);
    // Its view box is its size.
    EXPECT_COLOR(drawBody("<image x='100' y='50' opacity='0.5'" + href), 115, 55, 0x8080ff);
    EXPECT_COLOR(drawBody("<image width='100' height='100' preserveAspectRatio='none'" + href), 75, 5, kBlue);
}

TEST(DrawInnerDrawings, WithinOneAreNotDrawn) {
    std::string inner = kInner;
    for (std::size_t at = 0; (at = inner.find('%', at)) != inner.npos; at += 3) inner.replace(at, 1, "%25");
    const Picture picture = drawBody(
        "<image width='200' height='100' href='data:image/svg+xml,%3Csvg "
        "xmlns=%22http://www.w3.org/2000/svg%22 "
        "width=%22200%22 height=%22100%22%3E%3Crect width=%22100%22 height=%22100%22 "
        "fill=%22lime%22/%3E%3Cimage "
        "width=%22200%22 height=%22100%22 href=%22" +
        inner + "%22/%3E%3C/svg%3E'/>");
    EXPECT_COLOR(picture, 50, 50, kLime);
    EXPECT_COLOR(picture, 150, 50, kWhite);
}

TEST(DrawInnerDrawings, CostWhatTheyRepeat) {
    // Ten thousand images of ten thousand elements each: the budget of the picture ends it.
    std::string inner = "data:image/svg+xml,%3Csvg xmlns=%22http://www.w3.org/2000/svg%22%3E";
    for (int i = 0; i < 10000; ++i) inner += "%3Cg/%3E";
    inner += "%3C/svg%3E";
    std::string body = "<image id='i' width='9' height='9' href='" + inner + "'/>";
    for (int i = 0; i < 10000; ++i) body += "<use href='#i'/>";
    EXPECT_COLOR(drawBody(body + box("fill='red'")), 50, 50, kRed);
}

TEST(DrawInnerDrawings, FillFilterSteps) {
    const Picture picture = drawBody(
        filteredBy("<feImage x='20' y='10' width='40' height='20' href='" + std::string(kInner) + "'/>"));
    EXPECT_COLOR(picture, 30, 20, kRed);
    EXPECT_COLOR(picture, 50, 20, kBlue);
    EXPECT_COLOR(picture, 100, 50, kWhite);
}

TEST(DrawFilterValues, ElementsFillFilterSteps) {
    const Picture picture = drawBody("<defs><rect id='e' width='30' height='30' fill='red'/></defs>" +
                                     filteredBy("<feImage x='40' y='30' href='#e'/>"));
    EXPECT_COLOR(picture, 50, 50, kRed);
    EXPECT_COLOR(picture, 30, 50, kWhite);
    // One that shows itself shows nothing.
    EXPECT_COLOR(
        drawBody(filteredBy("<feImage href='#self'/>", box("id='self' fill='red' filter='url(#f)'"))), 190, 5,
        kWhite);
}

}  // namespace

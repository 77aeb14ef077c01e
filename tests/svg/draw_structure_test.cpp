// What is drawn, in which order and where: layers, use, symbols, nested drawings, hiding, view filters.
#include "kzcore/document/refer_item.h"
#include "kzcore/view/view.h"
#include "picture.h"
#include "support.h"

namespace {

using namespace svg_test;

// Refuses one colour.
class WithoutColor : public AViewFilter {
public:
    explicit WithoutColor(COLORREF color) : m_color(color) {}
    int isVisible(AReferItem* item) override {
        const AColorItem* color = nullptr;
        if (auto* const brush = dynamic_cast<ASolidBrushItem*>(item)) color = brush->getColorItem();
        if (auto* const pen = dynamic_cast<APenItem*>(item)) color = pen->getColorItem();
        return !color || color->getDisplayColor() != m_color;
    }

private:
    COLORREF m_color;
};

TEST(DrawStructure, LaterObjectsCoverEarlierOnes) {
    const Picture picture = drawBody(
        "<rect width='40' height='40' fill='red'/>"
        "<rect x='20' width='40' height='40' fill='blue'/>");
    EXPECT_EQ(picture.at(10, 10), kRed);
    EXPECT_EQ(picture.at(30, 10), kBlue);
}

TEST(DrawStructure, LayersAreDrawnInTheirOrderMasterLayersFirst) {
    const std::string layer = "<g inkscape:groupmode='layer' ";
    const Picture picture =
        drawBody(layer + "inkscape:label='A'><rect width='60' height='60' fill='red'/></g>" + layer +
                 "inkscape:label='B'><rect x='20' width='60' height='60' fill='blue'/></g>" + layer +
                 "inkscape:label='M' kz:database='master'><rect width='200' height='100' fill='lime'/></g>");
    EXPECT_EQ(picture.at(10, 10), kRed);
    EXPECT_EQ(picture.at(30, 10), kBlue);
    EXPECT_EQ(picture.at(150, 10), kLime);
}

TEST(DrawStructure, HiddenLayersComeBackWhenTheyAreShown) {
    const auto document = readBody(
        "<g inkscape:groupmode='layer' style='display:none'>"
        "<rect width='40' height='40' fill='red'/></g>");
    EXPECT_EQ(Picture(*document).at(10, 10), kWhite);
    auto* const layer = static_cast<ALayer*>(document->getDatabase().children.GetHead());
    layer->setHidden(false);
    EXPECT_EQ(Picture(*document).at(10, 10), kRed);
}

TEST(DrawStructure, HiddenObjectsAreNotDrawn) {
    EXPECT_EQ(drawBody("<rect width='9' height='9' display='none'/><g style='display:none'>"
                       "<rect width='9' height='9'/></g><rect width='9' height='9' visibility='hidden'/>"),
              drawBody(""));
    EXPECT_EQ(
        drawBody("<g visibility='hidden'><rect width='9' height='9' fill='red' visibility='visible'/></g>")
            .at(4, 4),
        kRed);
}

TEST(DrawStructure, UseRepeatsAtItsPlace) {
    const Picture picture = drawBody(
        "<rect id='r' width='20' height='20'/>"
        "<use href='#r' x='40' fill='red'/>"
        "<use xlink:href='#r' transform='translate(80 0) scale(2)'/>");
    EXPECT_EQ(picture.at(10, 10), 0U);
    EXPECT_EQ(picture.at(50, 10), kRed);
    EXPECT_EQ(picture.at(119, 39), 0U);
    EXPECT_EQ(picture.at(70, 10), kWhite);
}

TEST(DrawStructure, SymbolFitsItsViewBoxAndCutsWhatLiesOutside) {
    const Picture picture = drawBody(
        "<symbol id='s' viewBox='0 0 10 10'>"
        "<rect x='-10' width='15' height='10' fill='red'/></symbol>"
        "<use href='#s' x='50' y='10' width='40' height='40'/>");
    EXPECT_EQ(picture.at(51, 11), kRed);
    EXPECT_EQ(picture.at(69, 49), kRed);
    EXPECT_EQ(picture.at(70, 30), kWhite);
    EXPECT_EQ(picture.at(49, 30), kWhite);
}

TEST(DrawStructure, SymbolMayShowWhatLiesOutside) {
    const Picture picture = drawBody(
        "<symbol id='s' viewBox='0 0 10 10' overflow='visible'>"
        "<rect x='-10' width='15' height='10' fill='red'/></symbol>"
        "<use href='#s' x='50' y='10' width='40' height='40'/>");
    EXPECT_EQ(picture.at(20, 30), kRed);
}

TEST(DrawStructure, SymbolByItselfIsNotDrawn) {
    EXPECT_EQ(drawBody("<symbol id='s'><rect width='50' height='50'/></symbol>"), drawBody(""));
}

TEST(DrawStructure, NestedDrawingKeepsTheAspectOfItsViewBox) {
    const std::string content = " viewBox='0 0 10 10'><rect width='10' height='10' fill='red'/></svg>";
    const Picture middle = drawBody("<svg x='20' y='20' width='80' height='40'" + content);
    EXPECT_EQ(middle.at(39, 30), kWhite);
    EXPECT_EQ(middle.at(40, 20), kRed);
    EXPECT_EQ(middle.at(79, 59), kRed);
    const Picture stretched =
        drawBody("<svg x='20' y='20' width='80' height='40' preserveAspectRatio='none'" + content);
    EXPECT_EQ(stretched.at(20, 20), kRed);
    EXPECT_EQ(stretched.at(99, 59), kRed);
    const Picture slice =
        drawBody("<svg x='20' y='20' width='80' height='40' preserveAspectRatio='xMinYMin slice'" + content);
    EXPECT_EQ(slice.at(99, 59), kRed);
    EXPECT_EQ(slice.at(99, 60), kWhite);
}

TEST(DrawStructure, AViewBoxOfOtherThanFourNumbersIsNone) {
    for (const char* const box : {"0 0 50 25 3", "0 0 50% 25", "0 0 50px 25", "0 0 50"}) {
        const Picture picture = drawBody("<svg width='100' height='50' viewBox='" + std::string(box) +
                                         "'><rect width='25' height='25' fill='red'/></svg>");
        EXPECT_COLOR(picture, 20, 20, kRed) << box;
        EXPECT_COLOR(picture, 40, 20, kWhite) << box;
    }
}

TEST(DrawStructure, SwitchDrawsTheChildThatImportChose) {
    const Picture picture = drawBody(
        "<switch><rect systemLanguage='fr' width='9' height='9' fill='red'/>"
        "<rect width='9' height='9' fill='blue'/></switch>");
    EXPECT_EQ(picture.at(4, 4), kBlue);
}

TEST(DrawStructure, GroupThatIsOneObjectIsDrawnWithItsContent) {
    const Picture picture = drawBody(
        "<g kz:class='ADimension' transform='translate(10 0)'>"
        "<rect width='20' height='20' fill='red'/>"
        "<g opacity='.5'><rect x='40' width='20' height='20' fill='blue'/></g></g>");
    EXPECT_EQ(picture.at(20, 10), kRed);
    EXPECT_COLOR(picture, 60, 10, 0x8080ff);
}

TEST(DrawStructure, ViewFilterTakesAwayFillOrStrokeAlone) {
    const auto document = readBody(
        "<rect x='20' y='20' width='40' height='40' fill='red' stroke='blue' "
        "stroke-width='10'/>");
    const Picture stroked(*document, new WithoutColor(RGB(255, 0, 0)));
    EXPECT_EQ(stroked.at(40, 40), kWhite);
    EXPECT_EQ(stroked.at(17, 40), kBlue);
    const Picture filled(*document, new WithoutColor(RGB(0, 0, 255)));
    EXPECT_EQ(filled.at(40, 40), kRed);
    EXPECT_EQ(filled.at(22, 40), kRed);
    EXPECT_EQ(filled.at(17, 40), kWhite);
}

TEST(DrawStructure, OpacityStaysWhenTheFilterLeavesOnePaint) {
    const auto document = readBody(
        "<rect x='20' y='20' width='40' height='40' fill='red' stroke='blue' "
        "stroke-width='10' opacity='.5'/>");
    EXPECT_COLOR(Picture(*document, new WithoutColor(RGB(0, 0, 255))), 40, 40, 0xff8080);
}

TEST(DrawStructure, ColoursAreThoseOfTheModel) {
    const auto document = readBody("<rect id='a' width='20' height='20' fill='red' fill-opacity='.5'/>");
    document->findObject("a")->setBrush(document->getPaint().rgbBrush(0x0000ff));
    EXPECT_COLOR(Picture(*document), 10, 10, 0x8080ff);
}

TEST(DrawStructure, ObjectsThatTheModelHidesAreNotDrawn) {
    const auto document = readBody("<rect id='a' width='20' height='20' fill='red'/>");
    document->findObject("a")->setObjectFlags(kObjectHidden, true);
    EXPECT_EQ(Picture(*document), drawBody(""));
    document->findObject("a")->setObjectFlags(kObjectHidden, false);
    EXPECT_EQ(Picture(*document).at(10, 10), kRed);
}

TEST(DrawStructure, AnEmptyViewBoxHidesWhatHasIt) {
    EXPECT_COLOR(drawBody("<svg viewBox='0 0 0 10'><rect width='50' height='50'/></svg>"), 20, 20, kWhite);
    EXPECT_COLOR(
        drawBody("<pattern id='p' width='1' height='1' viewBox='0 0 0 0'><rect width='99' height='99'/>"
                 "</pattern>" +
                 box("fill='url(#p)'")),
        50, 50, kWhite);
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

}  // namespace

#include <gtest/gtest.h>

#include <algorithm>

#include "kzcore/document/named_colors.h"
#include "kzcore/document/paint_table.h"

namespace {

const AClassInfo& colorClass(const WCHAR* name) {
    return *findClass(name);
}

}  // namespace

TEST(Paint, OneItemStandsForEachDistinctColorAndClass) {
    APaintTable paint;
    AColorItem* red = paint.rgb(0xff0000);
    EXPECT_EQ(paint.rgb(0xff0000), red);
    EXPECT_NE(paint.rgb(0xff0001), red);
    AColorItem* gray = paint.color(colorClass(_T("AGrayColorItem")), "", {0.5F, 0, 0, 0}, 0x808080);
    EXPECT_EQ(paint.color(colorClass(_T("AGrayColorItem")), "", {0.5F, 0, 0, 0}, 0x808080), gray);
    EXPECT_NE(paint.rgb(0x808080), gray);
    EXPECT_EQ(gray->getName().toUtf8(), "gray");
    EXPECT_EQ(paint.getColors().size(), 4U);
}

TEST(Paint, ColorsAreNamedByTheirCanonicalCssNameOrTheirDigits) {
    APaintTable paint;
    const std::pair<std::uint32_t, const char*> names[] = {
        {0xff0000, "red"},       {0x00ffff, "cyan"},          {0xff00ff, "magenta"}, {0x808080, "gray"},
        {0xd3d3d3, "lightgray"}, {0x2f4f4f, "darkslategray"}, {0x0a0b0c, "#0a0b0c"}, {0x000000, "black"}};
    for (const auto& [value, name] : names) EXPECT_EQ(paint.rgb(value)->getName().toUtf8(), name);
}

TEST(Paint, EveryNamedColorIsFoundAndGoesBackToItsValue) {
    EXPECT_EQ(namedColors().size(), 148U);
    EXPECT_TRUE(std::ranges::is_sorted(namedColors(), {}, &ANamedColor::name));
    for (const ANamedColor& color : namedColors()) {
        EXPECT_EQ(findNamedColor(color.name), color.value);
        EXPECT_EQ(findNamedColor(canonicalColorName(color.value)), color.value);
    }
    EXPECT_EQ(findNamedColor("Red"), std::nullopt);
    EXPECT_EQ(findNamedColor("zzz"), std::nullopt);
}

TEST(Paint, TheDisplayColorIsAColorRef) {
    APaintTable paint;
    EXPECT_EQ(paint.rgb(0x112233)->getDisplayColor(), COLORREF{0x332211});
}

TEST(Paint, SameColorMeansSameClassAndComponents) {
    APaintTable one;
    APaintTable other;
    AColorItem* red = one.rgb(0xff0000);
    EXPECT_TRUE(red->isSameColor(red));
    EXPECT_TRUE(red->isSameColor(other.rgb(0xff0000)));
    EXPECT_FALSE(red->isSameColor(other.rgb(0xfe0000)));
    EXPECT_FALSE(red->isSameColor(nullptr));
    AColorItem* cmyk = one.color(colorClass(_T("ACMYKColorItem")), "red", {1, 0, 0, 0}, 0xff0000);
    EXPECT_FALSE(red->isSameColor(cmyk));
    AColorItem* spot = one.color(colorClass(_T("ASpotColorItem")), "Brand", {1, 0, 0, 0}, 0xff0000);
    EXPECT_FALSE(
        spot->isSameColor(other.color(colorClass(_T("ASpotColorItem")), "Other", {1, 0, 0, 0}, 0xff0000)));
    EXPECT_TRUE(
        spot->isSameColor(other.color(colorClass(_T("ASpotColorItem")), "Brand", {1, 0, 0, 0}, 0xff0000)));
    EXPECT_FALSE(red->isEqual(one.solidBrush(red)->getBrushItem()));
}

TEST(Paint, BrushesAndPensAreSharedToo) {
    APaintTable paint;
    AColorItem* red = paint.rgb(0xff0000);
    EXPECT_EQ(paint.solidBrush(red), paint.solidBrush(red));
    EXPECT_EQ(paint.gradientBrush("g"), paint.gradientBrush("g"));
    EXPECT_NE(paint.gradientBrush("g"), paint.patternBrush("g"));
    EXPECT_EQ(paint.pen(red), paint.pen(red));
    EXPECT_EQ(paint.pen(red)->getPenItem()->getColorItem(), red);
    EXPECT_EQ(paint.solidBrush(red)->getBrushItem()->getName().toUtf8(), "red");
    ABrushItem* gradient = paint.gradientBrush("g")->getBrushItem();
    EXPECT_EQ(paint.brushPen(gradient)->getPenItem()->getBrushItem(), gradient);
    EXPECT_EQ(paint.brushPen(gradient)->getPenItem()->getColorItem(), nullptr);
    EXPECT_EQ(paint.getBrushes().size(), 3U);
}

TEST(Paint, AnItemLivesUntilItsLastReferenceIsReleased) {
    AColorItem* red = nullptr;
    {
        APaintTable paint;
        red = paint.rgb(0xff0000);
        EXPECT_EQ(red->getReferenceCount(), 1);
        paint.solidBrush(red);
        EXPECT_EQ(red->getReferenceCount(), 2);
        EXPECT_EQ(red->addReference(), 3);
    }
    EXPECT_EQ(red->getReferenceCount(), 1);
    EXPECT_EQ(red->getName().toUtf8(), "red");
    EXPECT_EQ(red->releaseReference(), 0);
}

TEST(Paint, SwatchesOfOneLabelAndDifferentColorsAreTwoColorsWithTwoNames) {
    APaintTable paint;
    const AClassInfo& spot = colorClass(_T("ASpotColorItem"));
    AColorItem* red = paint.color(spot, "Brand", {1, 0, 0, 0}, 0xff0000);
    AColorItem* blue = paint.color(spot, "Brand", {1, 0, 0, 0}, 0x0000ff);
    ASSERT_NE(red, blue);
    EXPECT_EQ(paint.color(spot, "Brand", {1, 0, 0, 0}, 0x0000ff), blue);
    EXPECT_EQ(red->getName().toUtf8(), "Brand");
    EXPECT_EQ(blue->getName().toUtf8(), "Brand-2");
    EXPECT_EQ(blue->getDisplayColor(), COLORREF{0xff0000});
    EXPECT_FALSE(red->isSameColor(blue));
    AColorItem* labelled = paint.color(spot, "Brand-2", {1, 0, 0, 0}, 0x00ff00);
    EXPECT_EQ(labelled->getName().toUtf8(), "Brand-2-2") << "the name was taken";
    EXPECT_EQ(paint.color(spot, "brand", {1, 0, 0, 0}, 0xff0000)->getName().toUtf8(), "brand")
        << "another name";
    const AClassInfo& gray = colorClass(_T("AGrayColorItem"));
    EXPECT_EQ(paint.color(gray, "Brand", {0.5F, 0, 0, 0}, 0x808080)->getName().toUtf8(), "Brand")
        << "of another class";
}

TEST(Paint, AThousandSwatchesOfOneLabelAreNumbered) {
    APaintTable paint;
    const AClassInfo& spot = colorClass(_T("ASpotColorItem"));
    for (std::uint32_t i = 1; i <= 1000; ++i) {
        const std::string expected = i == 1 ? "Brand" : "Brand-" + std::to_string(i);
        EXPECT_EQ(paint.color(spot, "Brand", {1, 0, 0, 0}, i)->getName().toUtf8(), expected);
    }
    EXPECT_EQ(paint.findNamed("BRAND-777").size(), 1U);
}

TEST(Paint, ColorsAreFoundByValueAndByName) {
    APaintTable paint;
    EXPECT_EQ(paint.findRgb(0xff0000), nullptr);
    AColorItem* red = paint.rgb(0xff0000);
    EXPECT_EQ(paint.findRgb(0xff0000), red);
    EXPECT_TRUE(paint.findNamed("red").empty()) << "RGB colours are found by value";
    AColorItem* spot = paint.color(colorClass(_T("ASpotColorItem")), "Red", {1, 0, 0, 0}, 0xff0000);
    AColorItem* cmyk = paint.color(colorClass(_T("ACMYKColorItem")), "", {0, 1, 1, 0}, 0xff0000);
    EXPECT_EQ(paint.findNamed("rED"), (std::vector<AColorItem*>{spot, cmyk}));
    EXPECT_EQ(cmyk->getName().toUtf8(), "red");
}

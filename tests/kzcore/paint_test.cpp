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

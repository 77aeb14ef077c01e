#include <gtest/gtest.h>

#include "kzcore/device/device_mgr.h"
#include "kzcore/document/paint_table.h"
#include "tests/support/pixels.h"

using namespace test;

namespace {

// The sample of an item in the area from (2, 1) to (8, 7) of a picture of 10x8 pixels, as a swatch takes it:
// drawn offscreen, copied into a picture that is green all around.
template <class Item>
Pixels sample(const Item& item) {
    CClientDC display(nullptr);
    CDC memory;
    CBitmap bitmap;
    memory.CreateCompatibleDC(&display);
    bitmap.CreateCompatibleBitmap(&display, 10, 8);
    {
        CSelection target(memory, bitmap);
        AScreenInfo screen(1.0);
        ADevice device(memory, screen);
        RECT pixels{2, 1, 8, 7};
        AFRect area = screen.screenToDrawing(pixels);
        ADevice* offscreen = KzGetDeviceMgr()->GetOffscreenDevice(device, area, 0);
        item.drawSample(*offscreen, pixels);
        device.DrawStart();
        device.Fill(AColor(kGreen));
        device.CopyBits(area, *offscreen, area, SRCCOPY);
        device.DrawEnd();
        KzGetDeviceMgr()->ReleaseDevice(offscreen);
    }
    return pixelsOf(bitmap);
}

struct Sample : testing::Test {
    SystemColor window{COLOR_WINDOW, kWhite};
    APaintTable paint;
};

constexpr const char* kGreenRow = "gggggggggg\n";

std::string framed(const std::string& row) {
    std::string rows = kGreenRow;
    for (int i = 0; i < 6; ++i) rows += row;
    return rows + kGreenRow;
}

}  // namespace

TEST_F(Sample, OfASolidBrushIsItsColourToTheEdges) {
    EXPECT_EQ(picture(sample(*paint.solidBrush(paint.rgb(0xff0000))->getBrushItem())),
              framed("ggrrrrrrgg\n"));
}

TEST_F(Sample, OfABrushWithoutAnythingToShowIsTheWindowColour) {
    SystemColor changed(COLOR_WINDOW, kBlue);
    ASolidBrushItem* empty = new ASolidBrushItem(nullptr);
    EXPECT_EQ(picture(sample(*empty)), framed("ggbbbbbbgg\n"));
    empty->releaseReference();
}

TEST_F(Sample, OfAGradientRunsThroughItsStops) {
    auto* gradient = dynamic_cast<AGradientBrushItem*>(paint.gradientBrush("g1")->getBrushItem());
    ASSERT_NE(gradient, nullptr);
    gradient->setStops({{0.25, AColor(kBlack)}, {0.75, AColor(RGB(240, 0, 0))}});
    Pixels pixels = sample(*gradient);
    // Columns show their middles: 1/12, 3/12, 5/12 and so on of the way.
    const int reds[] = {0, 0, 80, 160, 240, 240};
    for (int x = 0; x < 6; ++x) {
        for (int y = 1; y < 7; ++y) EXPECT_EQ(pixels.at(x + 2, y), RGB(reds[x], 0, 0)) << x << "," << y;
    }
    EXPECT_EQ(pixels.at(1, 1), kGreen);
    EXPECT_EQ(pixels.at(8, 1), kGreen);
}

TEST_F(Sample, OfAGradientWithAHardEdgeHasNoMixedColours) {
    auto* gradient = dynamic_cast<AGradientBrushItem*>(paint.gradientBrush("g2")->getBrushItem());
    ASSERT_NE(gradient, nullptr);
    gradient->setStops({{0, AColor(kRed)}, {0.5, AColor(kRed)}, {0.5, AColor(kBlue)}, {1, AColor(kBlue)}});
    EXPECT_EQ(picture(sample(*gradient)), framed("ggrrrbbbgg\n"));
}

TEST_F(Sample, OfAGradientWithoutStopsRunsFromBlackToWhite) {
    Pixels pixels = sample(*paint.gradientBrush("g3")->getBrushItem());
    for (int x = 3; x < 8; ++x) EXPECT_GT(GetRValue(pixels.at(x, 3)), GetRValue(pixels.at(x - 1, 3)));
}

TEST_F(Sample, OfAPatternIsHatchedFromItsLowerLeftCorner) {
    const std::string expected = std::string(kGreenRow) + "ggw?www?gg\n" + "gg?www?wgg\n" + "ggwww?wwgg\n" +
                                 "ggww?wwwgg\n" + "ggw?www?gg\n" + "gg?www?wgg\n" + kGreenRow;
    Pixels pixels = sample(*paint.patternBrush("p1")->getBrushItem());
    EXPECT_EQ(picture(pixels), expected);
    EXPECT_EQ(pixels.at(2, 6), RGB(128, 128, 128));
}

TEST_F(Sample, OfAPenIsAStrokeAcrossTheMiddle) {
    const std::string expected = std::string(kGreenRow) + "ggwwwwwwgg\nggwwwwwwgg\nggrrrrrrgg\nggrrrrrrgg\n" +
                                 "ggwwwwwwgg\nggwwwwwwgg\n" + kGreenRow;
    EXPECT_EQ(picture(sample(*paint.pen(paint.rgb(0xff0000))->getPenItem())), expected);
    ABrushItem* brush = paint.solidBrush(paint.rgb(0xff0000))->getBrushItem();
    EXPECT_EQ(picture(sample(*paint.brushPen(brush)->getPenItem())), expected);
}

TEST_F(Sample, OfAPenThatDrawsNothingIsEmpty) {
    APenItem* none = new APenItem(APenItem::kStyleNone, paint.rgb(0xff0000), nullptr);
    APenItem* bare = new APenItem(APenItem::kStyleSolid, nullptr, nullptr);
    EXPECT_EQ(picture(sample(*none)), framed("ggwwwwwwgg\n"));
    EXPECT_EQ(picture(sample(*bare)), framed("ggwwwwwwgg\n"));
    none->releaseReference();
    bare->releaseReference();
}

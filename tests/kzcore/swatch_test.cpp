// The way in which a tree makes a picture of a brush: a sample drawn offscreen and copied onto a framed
// bitmap.
#include <gtest/gtest.h>

#include "kzcore/device/device_mgr.h"
#include "kzcore/document/paint_table.h"
#include "tests/support/pixels.h"

using namespace test;

namespace {

// The bitmap that takes the sample: a black frame from (2, 3) to (13, 12) on the window colour.
void paintFrame(CBitmap& bitmap) {
    std::string rows;
    for (int y = 0; y < 16; ++y) {
        for (int x = 0; x < 16; ++x) {
            bool inside = x >= 2 && x <= 13 && y >= 3 && y <= 12;
            rows += inside && (x == 2 || x == 13 || y == 3 || y == 12) ? '.' : 'w';
        }
        rows += '\n';
    }
    paint(bitmap, rows);
}

Pixels swatch(ABrushItem* item) {
    CDC display;
    CDC memory;
    CBitmap bitmap;
    display.CreateDC(_T("DISPLAY"), nullptr, nullptr, nullptr);
    memory.CreateCompatibleDC(&display);
    paintFrame(bitmap);
    AScreenInfo screen(1.0);
    ADevice device(display, screen);
    RECT pixels{2, 2, 16, 14};
    ADevice* offscreen = KzGetDeviceMgr()->GetOffscreenDevice(device, screen.screenToDrawing(pixels), 0);
    {
        CSelection target(memory, bitmap);
        ADevice picture(memory, screen);
        AColor window(GetSysColor(COLOR_WINDOW));
        if (item != nullptr) {
            item->drawSample(*offscreen, pixels);
        } else {
            offscreen->DrawStart();
            offscreen->Fill(window);
            offscreen->DrawEnd();
        }
        AFRect area = screen.screenToDrawing(RECT{3, 3, 16, 14});
        picture.DrawStart();
        picture.Fill(area, window);
        picture.CopyBits(area, *offscreen, area, SRCCOPY);
        picture.DrawEnd();
    }
    KzGetDeviceMgr()->ReleaseDevice(offscreen);
    return pixelsOf(bitmap);
}

void expectSample(const Pixels& pixels, COLORREF color) {
    CBitmap frame;
    paintFrame(frame);
    Pixels around = pixelsOf(frame);
    ASSERT_EQ(pixels.colors.size(), 256u);
    for (int y = 0; y < 16; ++y) {
        for (int x = 0; x < 16; ++x) {
            bool inside = x >= 3 && y >= 3 && y < 14;
            EXPECT_EQ(pixels.at(x, y), inside ? color : around.at(x, y)) << x << "," << y;
        }
    }
}

}  // namespace

TEST(Swatch, CoversThirteenByElevenPixelsOfTheFrame) {
    SystemColor window(COLOR_WINDOW, kWhite);
    APaintTable paint;
    expectSample(swatch(paint.solidBrush(paint.rgb(0x123456))->getBrushItem()), RGB(0x12, 0x34, 0x56));
}

TEST(Swatch, OfNoBrushIsTheWindowColour) {
    SystemColor window(COLOR_WINDOW, RGB(250, 249, 248));
    expectSample(swatch(nullptr), RGB(250, 249, 248));
}

TEST(Swatch, IsMadeAgainAndAgainWithoutRunningOutOfHandles) {
    APaintTable paint;
    ABrushItem* brush = paint.solidBrush(paint.rgb(0xff0000))->getBrushItem();
    Pixels first = swatch(brush);
    for (int i = 0; i < 2'000; ++i) swatch(brush);
    EXPECT_EQ(swatch(brush), first);
}

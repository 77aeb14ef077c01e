#include <gtest/gtest.h>

#include <limits>

#include "kzcore/device/device_mgr.h"
#include "tests/support/pixels.h"

using namespace test;

namespace {

// A memory context with a picture, and a device on it.
struct Device : testing::Test {
    CClientDC display{nullptr};
    CDC memory;
    CBitmap bitmap;
    AScreenInfo screen{1.0};
    HGDIOBJ before = nullptr;

    void SetUp() override {
        ASSERT_TRUE(memory.CreateCompatibleDC(&display));
        show("......\n......\n......\n......\n");
    }
    void TearDown() override { memory.SelectObject(before); }

    void show(const std::string& rows) {
        if (before != nullptr) memory.SelectObject(before);
        paint(bitmap, rows);
        before = memory.SelectObject(bitmap);
    }

    // What the context's bitmap holds.
    Pixels drawn() {
        memory.SelectObject(before);
        Pixels pixels = pixelsOf(bitmap);
        memory.SelectObject(bitmap);
        return pixels;
    }
};

struct Offscreen {
    Offscreen(const ADevice& model, const AFRect& rect)
        : device(KzGetDeviceMgr()->GetOffscreenDevice(model, rect, 0)) {}
    ~Offscreen() { KzGetDeviceMgr()->ReleaseDevice(device); }
    ADevice* device;
};

}  // namespace

TEST(ScreenInfo, ScalesByItsZoom) {
    EXPECT_EQ(AScreenInfo(1.0).screenToDrawing(RECT{2, 2, 16, 14}), (AFRect{2, 2, 16, 14}));
    EXPECT_EQ(AScreenInfo(2.0).screenToDrawing(RECT{2, 2, 16, 14}), (AFRect{1, 1, 8, 7}));
    EXPECT_EQ(AScreenInfo(0.5).screenToDrawing(RECT{2, 2, 16, 14}), (AFRect{4, 4, 32, 28}));
}

TEST(ScreenInfo, ComesBackToTheSamePixelsAtEveryZoom) {
    for (double zoom : {0.01, 0.1, 1 / 3.0, 0.9, 1.0, 1.1, 3.3, 64.0}) {
        for (LONG edge = -50; edge < 50; ++edge) {
            RECT rect{edge, edge + 1, edge + 7, edge + 20};
            RECT back = AScreenInfo(zoom).drawingToScreen(AScreenInfo(zoom).screenToDrawing(rect));
            EXPECT_EQ(back.left, rect.left) << zoom;
            EXPECT_EQ(back.top, rect.top) << zoom;
            EXPECT_EQ(back.right, rect.right) << zoom;
            EXPECT_EQ(back.bottom, rect.bottom) << zoom;
        }
    }
}

TEST(ScreenInfo, CountsAnImpossibleZoomAsOne) {
    double infinite = std::numeric_limits<double>::infinity();
    for (double zoom : {0.0, -1.0, infinite, std::numeric_limits<double>::quiet_NaN()}) {
        EXPECT_EQ(AScreenInfo(zoom).getZoom(), 1.0);
    }
}

TEST(ScreenInfo, KeepsPixelsCountable) {
    double infinite = std::numeric_limits<double>::infinity();
    RECT rect =
        AScreenInfo(1.0).drawingToScreen({-infinite, std::numeric_limits<double>::quiet_NaN(), 1e300, 5});
    EXPECT_EQ(rect.left, -(1 << 29));
    EXPECT_EQ(rect.top, 0);
    EXPECT_EQ(rect.right, 1 << 29);
    EXPECT_EQ(rect.bottom, 5);
}

TEST_F(Device, FillsWholePixelsAndNothingElse) {
    ADevice device(memory, screen);
    device.DrawStart();
    device.Fill({1, 1, 5, 3}, AColor(kRed));
    device.DrawEnd();
    EXPECT_EQ(picture(drawn()), "......\n.rrrr.\n.rrrr.\n......\n");
}

TEST_F(Device, FillsByItsZoom) {
    ADevice device(memory, AScreenInfo(2.0));
    device.DrawStart();
    device.Fill({1, 0.5, 2, 1.5}, AColor(kRed));
    device.DrawEnd();
    EXPECT_EQ(picture(drawn()), "......\n..rr..\n..rr..\n......\n");
}

TEST_F(Device, FillsAllOfItself) {
    ADevice device(memory, AScreenInfo(3.0));
    device.DrawStart();
    device.Fill(AColor(kBlue));
    device.DrawEnd();
    EXPECT_EQ(picture(drawn()), "bbbbbb\nbbbbbb\nbbbbbb\nbbbbbb\n");
}

TEST_F(Device, CutsAtItsEdges) {
    ADevice device(memory, screen);
    device.DrawStart();
    device.Fill({-5, -5, 2, 1}, AColor(kRed));
    device.Fill({5, 3, 1e12, 1e12}, AColor(kBlue));
    device.Fill({3, 3, 3, 9}, AColor(kGreen));
    device.Fill({4, 3, 2, 9}, AColor(kGreen));
    device.DrawEnd();
    EXPECT_EQ(picture(drawn()), "rr....\n......\n......\n.....b\n");
}

TEST_F(Device, MixesATransparentColourWithWhatIsThere) {
    show("wwww\nwwww\n");
    ADevice device(memory, screen);
    device.DrawStart();
    device.Fill({1, 0, 3, 1}, AColor(kBlack, 0.5));
    device.Fill({0, 1, 4, 2}, AColor(kRed, 0.0));
    device.DrawEnd();
    Pixels pixels = drawn();
    EXPECT_NEAR(GetRValue(pixels.at(1, 0)), 128, 2);
    EXPECT_EQ(pixels.at(1, 0), pixels.at(2, 0));
    EXPECT_EQ(pixels.at(0, 0), kWhite);
    EXPECT_EQ(pixels.at(3, 0), kWhite);
    EXPECT_EQ(pixels.at(0, 1), kWhite);
}

TEST_F(Device, PathsOnPixelEdgesAreExact) {
    ADevice device(memory, screen);
    device.DrawStart();
    device.FillPath(APath::rectangle({1, 1, 5, 3}), AColor(kRed));
    device.DrawEnd();
    EXPECT_EQ(picture(drawn()), "......\n.rrrr.\n.rrrr.\n......\n");
}

TEST_F(Device, FillRulesDifferWhereAPathCoversItselfTwice) {
    APath twice = APath::rectangle({0, 0, 6, 4});
    for (AFPoint corner : {AFPoint{2, 1}, AFPoint{4, 1}, AFPoint{4, 3}, AFPoint{2, 3}}) {
        corner.x == 2 && corner.y == 1 ? twice.moveTo(corner) : twice.lineTo(corner);
    }
    twice.close();
    ADevice device(memory, screen);
    device.DrawStart();
    device.FillPath(twice, AColor(kRed), EFillRule::evenOdd);
    device.DrawEnd();
    EXPECT_EQ(picture(drawn()), "rrrrrr\nrr..rr\nrr..rr\nrrrrrr\n");
    device.FillPath(twice, AColor(kBlue), EFillRule::nonZero);
    EXPECT_EQ(picture(drawn()), "bbbbbb\nbbbbbb\nbbbbbb\nbbbbbb\n");
}

TEST_F(Device, StrokesHaveTheirWidth) {
    APath line;
    line.moveTo({0, 2});
    line.lineTo({6, 2});
    ADevice device(memory, screen);
    device.DrawStart();
    device.StrokePath(line, AColor(kRed), 2);
    device.DrawEnd();
    EXPECT_EQ(picture(drawn()), "......\nrrrrrr\nrrrrrr\n......\n");
}

TEST_F(Device, CurvesBulge) {
    APath curve;
    curve.moveTo({0, 4});
    curve.curveTo({0, -1.4}, {6, -1.4}, {6, 4});
    curve.close();
    ADevice device(memory, screen);
    device.DrawStart();
    device.FillPath(curve, AColor(kRed));
    device.DrawEnd();
    Pixels pixels = drawn();
    // The corners hold a sliver of the curve at most.
    EXPECT_LT(GetRValue(pixels.at(0, 0)), 64);
    EXPECT_LT(GetRValue(pixels.at(5, 0)), 64);
    EXPECT_EQ(pixels.at(2, 2), kRed);
    EXPECT_EQ(pixels.at(3, 3), kRed);
}

TEST_F(Device, ImpossiblePathsDrawNothing) {
    ADevice device(memory, screen);
    APath bad = APath::rectangle({0, 0, std::numeric_limits<double>::quiet_NaN(), 4});
    APath lone;
    lone.close();
    device.DrawStart();
    device.FillPath(bad, AColor(kRed));
    device.FillPath(lone, AColor(kRed));
    device.StrokePath(APath::rectangle({0, 0, 5, 3}), AColor(kRed), 0);
    device.StrokePath(APath::rectangle({0, 0, 5, 3}), AColor(kRed), -1);
    device.FillPath(APath::rectangle({100, 100, 200, 200}), AColor(kRed));
    device.DrawEnd();
    EXPECT_EQ(picture(drawn()), "......\n......\n......\n......\n");
}

TEST_F(Device, AnOffscreenDeviceHoldsItsPartOfTheDrawing) {
    ADevice device(memory, screen);
    Offscreen offscreen(device, {2, 1, 6, 4});
    ASSERT_NE(offscreen.device, nullptr);
    offscreen.device->DrawStart();
    offscreen.device->Fill(AColor(kGreen));
    offscreen.device->Fill({0, 0, 3, 2}, AColor(kRed));
    offscreen.device->FillPath(APath::rectangle({5, 3, 9, 9}), AColor(kBlue));
    offscreen.device->DrawEnd();
    device.DrawStart();
    device.CopyBits({3, 1, 6, 4}, *offscreen.device, {3, 1, 6, 4}, SRCCOPY);
    device.CopyBits({2, 0, 3, 1}, *offscreen.device, {2, 1, 3, 2}, SRCCOPY);
    device.DrawEnd();
    EXPECT_EQ(picture(drawn()), "..r...\n...ggg\n...ggg\n...ggb\n");
}

TEST_F(Device, AnOffscreenDeviceIsBlackAtFirst) {
    show("wwww\nwwww\n");
    ADevice device(memory, screen);
    Offscreen offscreen(device, {1, 0, 3, 1});
    ASSERT_NE(offscreen.device, nullptr);
    device.CopyBits({1, 0, 3, 1}, *offscreen.device, {1, 0, 3, 1}, SRCCOPY);
    EXPECT_EQ(picture(drawn()), "w..w\nwwww\n");
}

TEST_F(Device, AnOffscreenDeviceOfADisplayHasItsScreenInformation) {
    ADevice device(display, AScreenInfo(2.0));
    Offscreen offscreen(device, {1, 1, 8, 7});
    ASSERT_NE(offscreen.device, nullptr);
    EXPECT_EQ(offscreen.device->getScreenInfo().getZoom(), 2.0);
    RECT box{};
    GetClipBox(offscreen.device->getContext(), &box);
    EXPECT_EQ(box.right - box.left, 14);
    EXPECT_EQ(box.bottom - box.top, 12);
}

TEST_F(Device, NoOffscreenDeviceForNothingOrForTooMuch) {
    ADevice device(display, screen);
    EXPECT_EQ(KzGetDeviceMgr()->GetOffscreenDevice(device, {3, 3, 3, 9}, 0), nullptr);
    EXPECT_EQ(KzGetDeviceMgr()->GetOffscreenDevice(device, {5, 5, 3, 9}, 0), nullptr);
    EXPECT_EQ(KzGetDeviceMgr()->GetOffscreenDevice(device, {-1e300, -1e300, 1e300, 1e300}, 0), nullptr);
    KzGetDeviceMgr()->ReleaseDevice(nullptr);
}

#include <gtest/gtest.h>

#include "tests/support/pixels.h"

using namespace test;

namespace {

struct Bitmaps : testing::Test {
    CClientDC screen{nullptr};
    CDC memory;

    void SetUp() override { ASSERT_TRUE(memory.CreateCompatibleDC(&screen)); }
};

}  // namespace

TEST_F(Bitmaps, ADisplaysBitmapHas32BitsAndIsBlack) {
    CBitmap bitmap;
    ASSERT_TRUE(bitmap.CreateCompatibleBitmap(&screen, 3, 2));
    BITMAP form{};
    ASSERT_TRUE(bitmap.GetBitmap(&form));
    EXPECT_EQ(form.bmWidth, 3);
    EXPECT_EQ(form.bmHeight, 2);
    EXPECT_EQ(form.bmPlanes, 1);
    EXPECT_EQ(form.bmBitsPixel, 32);
    EXPECT_EQ(form.bmWidthBytes, 12);
    EXPECT_EQ(form.bmBits, nullptr);
    EXPECT_EQ(picture(bitmap), "...\n...\n");
}

TEST_F(Bitmaps, ABitmapCompatibleWithAFreshMemoryContextIsMonochrome) {
    CBitmap bitmap;
    ASSERT_TRUE(bitmap.CreateCompatibleBitmap(&memory, 3, 2));
    BITMAP form{};
    ASSERT_TRUE(bitmap.GetBitmap(&form));
    EXPECT_EQ(form.bmBitsPixel, 1);
    EXPECT_EQ(form.bmWidthBytes, 2);
}

TEST_F(Bitmaps, ABitmapCompatibleWithAContextIsAsDeepAsItsBitmap) {
    CBitmap first;
    CBitmap second;
    ASSERT_TRUE(first.CreateCompatibleBitmap(&screen, 1, 1));
    CSelection selection(memory, first);
    ASSERT_TRUE(second.CreateCompatibleBitmap(&memory, 1, 1));
    BITMAP form{};
    ASSERT_TRUE(second.GetBitmap(&form));
    EXPECT_EQ(form.bmBitsPixel, 32);
}

TEST_F(Bitmaps, AnEmptySizeGivesTheMonochromeBitmapOfOnePixel) {
    struct Case {
        int width;
        int height;
    };
    for (Case size : {Case{0, 5}, Case{5, 0}, Case{0, 0}}) {
        CBitmap bitmap;
        BITMAP form{};
        EXPECT_TRUE(bitmap.CreateCompatibleBitmap(&screen, size.width, size.height));
        EXPECT_TRUE(bitmap.GetBitmap(&form));
        EXPECT_EQ(form.bmWidth, 1);
        EXPECT_EQ(form.bmHeight, 1);
        EXPECT_EQ(form.bmBitsPixel, 1);
    }
}

TEST_F(Bitmaps, AnEnormousSizeGivesNone) {
    EXPECT_EQ(CreateCompatibleBitmap(screen, 0x7fffffff, 0x7fffffff), nullptr);
}

TEST_F(Bitmaps, GetObjectTellsItsSizeAndWantsRoomForAll) {
    CBitmap bitmap;
    ASSERT_TRUE(bitmap.CreateCompatibleBitmap(&screen, 3, 2));
    BITMAP form{};
    EXPECT_EQ(bitmap.GetObject(0, nullptr), static_cast<int>(sizeof form));
    EXPECT_EQ(bitmap.GetObject(sizeof form - 1, &form), 0);
}

TEST_F(Bitmaps, GetObjectTellsABrushsColour) {
    CBrush brush(RGB(1, 2, 3));
    LOGBRUSH form{};
    ASSERT_EQ(brush.GetObject(sizeof form, &form), static_cast<int>(sizeof form));
    EXPECT_EQ(form.lbStyle, static_cast<UINT>(BS_SOLID));
    EXPECT_EQ(form.lbColor, RGB(1, 2, 3));
}

TEST_F(Bitmaps, ASelectedBitmapSurvivesItsDeletion) {
    CBitmap bitmap;
    ASSERT_TRUE(bitmap.CreateCompatibleBitmap(&screen, 3, 2));
    HGDIOBJ handle = bitmap.m_hObject;
    HGDIOBJ before = memory.SelectObject(handle);
    DeleteObject(handle);
    memory.SetPixel(1, 1, kRed);
    EXPECT_EQ(memory.GetPixel(1, 1), kRed);
    memory.SelectObject(before);
}

TEST_F(Bitmaps, ADeletedObjectIsRefusedEverywhere) {
    CBitmap bitmap;
    ASSERT_TRUE(bitmap.CreateCompatibleBitmap(&screen, 3, 2));
    auto stale = static_cast<HBITMAP>(bitmap.m_hObject);
    ASSERT_TRUE(bitmap.DeleteObject());
    BITMAP form{};
    EXPECT_FALSE(DeleteObject(stale));
    EXPECT_EQ(GetObjectW(stale, sizeof form, &form), 0);
    EXPECT_EQ(memory.SelectObject(stale), nullptr);
}

TEST_F(Bitmaps, StockAndSystemBrushesOutliveDeletion) {
    for (HGDIOBJ brush : {GetStockObject(WHITE_BRUSH), GetStockObject(BLACK_BRUSH)}) {
        LOGBRUSH form{};
        DeleteObject(brush);
        EXPECT_EQ(GetObjectW(brush, sizeof form, &form), static_cast<int>(sizeof form));
    }
}

TEST_F(Bitmaps, AWrapperTakesOneHandleAndGivesItBack) {
    CBitmap first;
    CBitmap second;
    ASSERT_TRUE(first.CreateCompatibleBitmap(&screen, 3, 2));
    EXPECT_FALSE(first.CreateCompatibleBitmap(&screen, 5, 5));
    HGDIOBJ handle = first.Detach();
    EXPECT_EQ(first.m_hObject, nullptr);
    EXPECT_FALSE(first.DeleteObject());
    EXPECT_FALSE(second.Attach(nullptr));
    EXPECT_TRUE(second.Attach(handle));
    BITMAP form{};
    ASSERT_TRUE(second.GetBitmap(&form));
    EXPECT_EQ(form.bmWidth, 3);
}

TEST_F(Bitmaps, RowsAreReadFromTheBottomOrFromTheTop) {
    CBitmap bitmap;
    paint(bitmap, "r\ng\nb\n");
    BITMAPINFO info{};
    info.bmiHeader.biSize = sizeof info.bmiHeader;
    info.bmiHeader.biWidth = 1;
    info.bmiHeader.biHeight = 3;
    info.bmiHeader.biPlanes = 1;
    info.bmiHeader.biBitCount = 32;
    DWORD rows[3]{};
    ASSERT_EQ(GetDIBits(screen, bitmap, 0, 3, rows, &info, DIB_RGB_COLORS), 3);
    EXPECT_EQ(rows[0] & 0xffffff, 0x0000ffu);
    EXPECT_EQ(rows[2] & 0xffffff, 0xff0000u);
    info.bmiHeader.biHeight = -3;
    ASSERT_EQ(GetDIBits(screen, bitmap, 0, 3, rows, &info, DIB_RGB_COLORS), 3);
    EXPECT_EQ(rows[0] & 0xffffff, 0xff0000u);
    EXPECT_EQ(rows[2] & 0xffffff, 0x0000ffu);
}

TEST_F(Bitmaps, ASectionSharesItsPixelsWithTheProgram) {
    BITMAPINFO info{};
    info.bmiHeader.biSize = sizeof info.bmiHeader;
    info.bmiHeader.biWidth = 2;
    info.bmiHeader.biHeight = -2;
    info.bmiHeader.biPlanes = 1;
    info.bmiHeader.biBitCount = 32;
    void* bits = nullptr;
    CBitmap bitmap;
    ASSERT_TRUE(bitmap.Attach(CreateDIBSection(screen, &info, DIB_RGB_COLORS, &bits, nullptr, 0)));
    auto* pixels = static_cast<DWORD*>(bits);
    CSelection selection(memory, bitmap);

    pixels[3] = 0x00ff0000;
    EXPECT_EQ(memory.GetPixel(1, 1), kRed);
    memory.SetPixel(1, 0, kBlue);
    GdiFlush();
    EXPECT_EQ(pixels[1] & 0xffffff, 0x0000ffu);
}

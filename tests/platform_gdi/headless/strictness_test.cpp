// Where the documentation forbids something and real systems answer this way or that, headless refuses: what
// passes here is right everywhere.
#include <gtest/gtest.h>

#include "tests/support/pixels.h"

using namespace test;

namespace {

struct Strictness : testing::Test {
    CClientDC screen{nullptr};
    CDC memory;
    CBitmap bitmap;
    CImageList list;

    void SetUp() override {
        ASSERT_TRUE(memory.CreateCompatibleDC(&screen));
        ASSERT_TRUE(list.Create(4, 4, ILC_COLOR24, 1, 1));
    }
};

}  // namespace

TEST_F(Strictness, ASelectedBitmapIsNotDeleted) {
    paint(bitmap, "rr\n");
    {
        CSelection selection(memory, bitmap);
        EXPECT_FALSE(DeleteObject(bitmap));
    }
    EXPECT_TRUE(bitmap.DeleteObject());
}

TEST_F(Strictness, ASelectedBrushIsNotDeleted) {
    CBrush brush(kRed);
    {
        CSelection selection(memory, brush);
        EXPECT_FALSE(DeleteObject(brush));
    }
    EXPECT_TRUE(brush.DeleteObject());
}

TEST_F(Strictness, ASelectedBitmapIsNotAddedToAnImageList) {
    paint(bitmap, "rrrr\nrrrr\nrrrr\nrrrr\n");
    {
        CSelection selection(memory, bitmap);
        EXPECT_EQ(list.Add(&bitmap, nullptr), -1);
    }
    EXPECT_EQ(list.Add(&bitmap, nullptr), 0);
}

TEST_F(Strictness, ABitmapWithoutOneWholePictureIsNotAdded) {
    for (const char* rows : {"rrr\nrrr\nrrr\nrrr\n", "rrrr\nrrrr\nrrrr\n", "rrrrrrrrrrrr\n"}) {
        paint(bitmap, rows);
        EXPECT_EQ(list.Add(&bitmap, nullptr), -1) << rows;
    }
    EXPECT_EQ(list.GetImageCount(), 0);
}

TEST_F(Strictness, AnImageListsOwnBitmapIsNotDeleted) {
    paint(bitmap, "rrrr\nrrrr\nrrrr\nrrrr\n");
    list.Add(&bitmap, nullptr);
    IMAGEINFO info{};
    ASSERT_TRUE(list.GetImageInfo(0, &info));
    EXPECT_FALSE(DeleteObject(info.hbmImage));
    EXPECT_EQ(pixelsOf(list, 0).at(3, 3), kRed);
}

TEST_F(Strictness, AWindowsContextIsReleasedToItsWindowOnly) {
    HDC context = GetDC(nullptr);
    EXPECT_FALSE(DeleteDC(context));
    EXPECT_EQ(ReleaseDC(reinterpret_cast<HWND>(std::uintptr_t{0x1234}), context), 0);
    EXPECT_EQ(ReleaseDC(nullptr, context), 1);
    EXPECT_EQ(ReleaseDC(nullptr, context), 0);
}

TEST_F(Strictness, HandlesOfOtherKindsAreRefused) {
    paint(bitmap, "rr\n");
    CBrush brush(kRed);
    BITMAP form{};
    EXPECT_EQ(GetObjectW(list.m_hImageList, sizeof form, &form), 0);
    EXPECT_FALSE(DeleteObject(list.m_hImageList));
    EXPECT_EQ(memory.SelectObject(memory.m_hDC), nullptr);
    EXPECT_FALSE(ImageList_Destroy(reinterpret_cast<HIMAGELIST>(bitmap.m_hObject)));
    EXPECT_EQ(ImageList_Add(list, static_cast<HBITMAP>(brush.m_hObject), nullptr), -1);
    EXPECT_EQ(GetPixel(reinterpret_cast<HDC>(bitmap.m_hObject), 0, 0), CLR_INVALID);
}

TEST_F(Strictness, ADestroyedImageListIsRefused) {
    HIMAGELIST stale = list.m_hImageList;
    ASSERT_TRUE(list.DeleteImageList());
    EXPECT_FALSE(ImageList_Destroy(stale));
    EXPECT_EQ(ImageList_GetImageCount(stale), 0);
    EXPECT_EQ(ImageList_SetBkColor(stale, kRed), CLR_NONE);
}

TEST_F(Strictness, NothingIsReadFromADisplay) {
    paint(bitmap, "rr\n");
    CSelection target(memory, bitmap);
    EXPECT_FALSE(memory.BitBlt(0, 0, 1, 1, &screen, 0, 0, SRCCOPY));
    EXPECT_EQ(screen.GetPixel(0, 0), CLR_INVALID);
    EXPECT_EQ(memory.GetPixel(0, 0), kRed);
}

TEST_F(Strictness, SettingAPixelOutsideFails) {
    paint(bitmap, "rr\n");
    CSelection target(memory, bitmap);
    EXPECT_EQ(memory.SetPixel(2, 0, kBlue), CLR_INVALID);
    EXPECT_EQ(memory.SetPixel(0, -1, kBlue), CLR_INVALID);
}

TEST_F(Strictness, OnlyKnownOperationsDraw) {
    paint(bitmap, "rr\n");
    CSelection target(memory, bitmap);
    constexpr DWORD kInvert = 0x00550009;
    EXPECT_FALSE(memory.PatBlt(0, 0, 1, 1, kInvert));
    EXPECT_EQ(memory.GetPixel(0, 0), kRed);
}

TEST_F(Strictness, NoSystemColourIsSetWhenOneDoesNotExist) {
    COLORREF before = GetSysColor(COLOR_WINDOW);
    const INT indexes[] = {COLOR_WINDOW, 1000};
    const COLORREF colors[] = {kRed, kRed};
    EXPECT_FALSE(SetSysColors(2, indexes, colors));
    EXPECT_EQ(GetSysColor(COLOR_WINDOW), before);
}

TEST_F(Strictness, AMaskedImageListIsRefused) {
    CImageList masked;
    EXPECT_FALSE(masked.Create(16, 16, ILC_COLOR24 | ILC_MASK, 1, 1));
}

#include <gtest/gtest.h>

#include "tests/support/pixels.h"

using namespace test;

namespace {

struct ImageList : testing::Test {
    CImageList list;

    void SetUp() override { ASSERT_TRUE(list.Create(2, 2, ILC_COLOR24, 10, 10)); }

    int add(const std::string& rows) {
        CBitmap bitmap;
        paint(bitmap, rows);
        return list.Add(&bitmap, nullptr);
    }
};

}  // namespace

TEST_F(ImageList, IsEmptyAtFirstWhateverItsInitialSize) {
    int width = 0;
    int height = 0;
    EXPECT_EQ(list.GetImageCount(), 0);
    EXPECT_TRUE(ImageList_GetIconSize(list, &width, &height));
    EXPECT_EQ(width, 2);
    EXPECT_EQ(height, 2);
}

TEST_F(ImageList, AStripBecomesPicturesAndTheFirstIndexIsReturned) {
    EXPECT_EQ(add("rrggbb\nrrggbb\n"), 0);
    EXPECT_EQ(add("ww\n..\n"), 3);
    EXPECT_EQ(list.GetImageCount(), 4);
    EXPECT_EQ(picture(list, 0), "rr\nrr\n");
    EXPECT_EQ(picture(list, 1), "gg\ngg\n");
    EXPECT_EQ(picture(list, 2), "bb\nbb\n");
    EXPECT_EQ(picture(list, 3), "ww\n..\n");
}

TEST_F(ImageList, ARestOfAStripIsDropped) {
    EXPECT_EQ(add("rrggb\nrrggb\n"), 0);
    EXPECT_EQ(list.GetImageCount(), 2);
    EXPECT_EQ(picture(list, 1), "gg\ngg\n");
}

TEST_F(ImageList, OfATallerStripTheTopRowsAreTaken) {
    EXPECT_EQ(add("rrgg\nrrgg\nbbbb\n"), 0);
    EXPECT_EQ(add("ww\nww\n"), 2);
    EXPECT_EQ(picture(list, 1), "gg\ngg\n");
    EXPECT_EQ(picture(list, 2), "ww\nww\n");
}

TEST_F(ImageList, NoBitmapAddsNothing) {
    EXPECT_EQ(list.Add(nullptr, nullptr), -1);
    EXPECT_EQ(list.GetImageCount(), 0);
}

TEST_F(ImageList, WhatIsBehindARemovedPictureMovesUp) {
    add("rrggbb\nrrggbb\n");
    EXPECT_FALSE(list.Remove(3));
    EXPECT_FALSE(list.Remove(-2));
    EXPECT_TRUE(list.Remove(1));
    EXPECT_EQ(list.GetImageCount(), 2);
    EXPECT_EQ(picture(list, 1), "bb\nbb\n");
    EXPECT_EQ(add("ww\n..\n"), 2);
    EXPECT_EQ(picture(list, 2), "ww\n..\n");
    EXPECT_TRUE(list.Remove(-1));
    EXPECT_EQ(list.GetImageCount(), 0);
}

TEST_F(ImageList, KeepsItsOwnCopyOfThePixels) {
    CBitmap bitmap;
    paint(bitmap, "rr\nrr\n");
    list.Add(&bitmap, nullptr);
    paint(bitmap, "bb\nbb\n");
    EXPECT_EQ(picture(list, 0), "rr\nrr\n");
}

TEST_F(ImageList, GrowsFarBeyondItsInitialSizeAndKeepsEveryPicture) {
    constexpr int kCount = 1000;
    CClientDC screen(nullptr);
    CDC memory;
    CBitmap bitmap;
    ASSERT_TRUE(memory.CreateCompatibleDC(&screen));
    ASSERT_TRUE(bitmap.CreateCompatibleBitmap(&screen, 2, 2));
    for (int i = 0; i < kCount; ++i) {
        {
            CSelection target(memory, bitmap);
            memory.SetPixel(0, 1, static_cast<COLORREF>(i));
        }
        ASSERT_EQ(list.Add(&bitmap, nullptr), i);
    }
    EXPECT_EQ(list.GetImageCount(), kCount);
    for (int i = 0; i < kCount; ++i) {
        Pixels pixels = pixelsOf(list, i);
        ASSERT_EQ(pixels.colors.size(), 4u);
        EXPECT_EQ(pixels.at(0, 1), static_cast<COLORREF>(i));
    }
}

TEST_F(ImageList, HasNoPicturesBeyondItsCount) {
    add("rr\nrr\n");
    IMAGEINFO info{};
    EXPECT_TRUE(list.GetImageInfo(0, &info));
    EXPECT_FALSE(list.GetImageInfo(1, &info));
    EXPECT_FALSE(list.GetImageInfo(-1, &info));
    EXPECT_EQ(picture(list, 1), "");
    EXPECT_EQ(picture(list, -1), "");
}

TEST_F(ImageList, TellsWhereAPictureStands) {
    add("rrgg\nrrgg\n");
    IMAGEINFO info{};
    ASSERT_TRUE(list.GetImageInfo(1, &info));
    EXPECT_NE(info.hbmImage, nullptr);
    EXPECT_EQ(info.rcImage.right - info.rcImage.left, 2);
    EXPECT_EQ(info.rcImage.bottom - info.rcImage.top, 2);
}

TEST_F(ImageList, DrawsAtAnyPlaceCutAtTheEdges) {
    add("rg\nbw\n");
    CClientDC screen(nullptr);
    CDC memory;
    CBitmap bitmap;
    ASSERT_TRUE(memory.CreateCompatibleDC(&screen));
    paint(bitmap, "...\n...\n...\n");
    {
        CSelection target(memory, bitmap);
        EXPECT_TRUE(list.Draw(&memory, 0, POINT{-1, -1}, ILD_NORMAL));
        EXPECT_TRUE(list.Draw(&memory, 0, POINT{1, 1}, ILD_NORMAL));
    }
    EXPECT_EQ(picture(bitmap), "w..\n.rg\n.bw\n");
}

TEST_F(ImageList, PicturesAreOpaqueWhateverTheBackgroundColour) {
    EXPECT_EQ(list.GetBkColor(), CLR_NONE);
    EXPECT_EQ(list.SetBkColor(kRed), CLR_NONE);
    EXPECT_EQ(list.GetBkColor(), kRed);
    add("w.\nwb\n");
    EXPECT_EQ(list.SetBkColor(kGreen), kRed);
    EXPECT_EQ(picture(list, 0), "w.\nwb\n");
}

TEST_F(ImageList, AnEmptySizeGivesNone) {
    CImageList other;
    EXPECT_FALSE(other.Create(0, 16, ILC_COLOR24, 10, 10));
    EXPECT_FALSE(other.Create(16, 0, ILC_COLOR24, 10, 10));
    EXPECT_EQ(other.GetSafeHandle(), nullptr);
}

TEST_F(ImageList, IsMadeOnceUntilItIsDeleted) {
    EXPECT_FALSE(list.Create(3, 3, ILC_COLOR24, 1, 1));
    add("rr\nrr\n");
    EXPECT_TRUE(list.DeleteImageList());
    EXPECT_FALSE(list.DeleteImageList());
    EXPECT_EQ(list.GetImageCount(), 0);
    ASSERT_TRUE(list.Create(1, 1, ILC_COLOR24, 1, 1));
    EXPECT_EQ(add("rg\n"), 0);
    EXPECT_EQ(list.GetImageCount(), 2);
}

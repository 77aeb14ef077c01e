#include <gtest/gtest.h>

#include "tests/support/pixels.h"

using namespace test;

TEST(SystemColors, AreSetForAsLongAsTheProgramWishes) {
    COLORREF window = GetSysColor(COLOR_WINDOW);
    {
        SystemColor changed(COLOR_WINDOW, RGB(1, 2, 3));
        EXPECT_EQ(GetSysColor(COLOR_WINDOW), RGB(1, 2, 3));
    }
    EXPECT_EQ(GetSysColor(COLOR_WINDOW), window);
}

TEST(SystemColors, AreIndependentOfEachOther) {
    SystemColor window(COLOR_WINDOW, RGB(1, 2, 3));
    SystemColor face(COLOR_3DFACE, RGB(4, 5, 6));
    EXPECT_EQ(GetSysColor(COLOR_WINDOW), RGB(1, 2, 3));
    EXPECT_EQ(GetSysColor(COLOR_3DFACE), RGB(4, 5, 6));
    EXPECT_EQ(GetSysColor(5), GetSysColor(COLOR_WINDOW));
    EXPECT_EQ(GetSysColor(15), GetSysColor(COLOR_BTNFACE));
}

TEST(SystemColors, AreBlackBeyondTheLastOne) {
    EXPECT_EQ(GetSysColor(-1), 0u);
    EXPECT_EQ(GetSysColor(1000), 0u);
}

TEST(SystemColors, HaveBrushesThatFollowThem) {
    CClientDC screen(nullptr);
    CDC memory;
    CBitmap bitmap;
    ASSERT_TRUE(memory.CreateCompatibleDC(&screen));
    ASSERT_TRUE(bitmap.CreateCompatibleBitmap(&screen, 1, 1));
    CSelection target(memory, bitmap);
    SystemColor window(COLOR_WINDOW, RGB(1, 2, 3));
    HGDIOBJ before = memory.SelectObject(GetSysColorBrush(COLOR_WINDOW));
    EXPECT_TRUE(memory.PatBlt(0, 0, 1, 1, PATCOPY));
    EXPECT_EQ(memory.GetPixel(0, 0), RGB(1, 2, 3));
    memory.SelectObject(before);
}

#include <gtest/gtest.h>

#include "tests/support/pixels.h"

using namespace test;

namespace {

struct DeviceContext : testing::Test {
    CClientDC screen{nullptr};
    CDC memory;
    CBitmap bitmap;

    void SetUp() override {
        ASSERT_TRUE(memory.CreateCompatibleDC(&screen));
        ASSERT_TRUE(bitmap.CreateCompatibleBitmap(&screen, 4, 3));
    }
};

}  // namespace

TEST_F(DeviceContext, TheDisplayIsOpenedByNameWithoutRegardToCase) {
    CDC upper;
    CDC lower;
    EXPECT_TRUE(upper.CreateDC(_T("DISPLAY"), nullptr, nullptr, nullptr));
    EXPECT_TRUE(lower.CreateDC(_T("display"), nullptr, nullptr, nullptr));
}

TEST_F(DeviceContext, NoOtherDriverIsOpened) {
    CDC context;
    EXPECT_FALSE(context.CreateDC(_T("NO SUCH DRIVER"), nullptr, nullptr, nullptr));
    EXPECT_EQ(context.GetSafeHdc(), nullptr);
}

TEST_F(DeviceContext, ANewMemoryContextHasAMonochromeBitmapOfOnePixel) {
    HGDIOBJ first = memory.SelectObject(bitmap);
    BITMAP form{};
    ASSERT_EQ(GetObjectW(first, sizeof form, &form), static_cast<int>(sizeof form));
    EXPECT_EQ(form.bmWidth, 1);
    EXPECT_EQ(form.bmHeight, 1);
    EXPECT_EQ(form.bmBitsPixel, 1);
    memory.SelectObject(first);
}

TEST_F(DeviceContext, SelectingReturnsWhatWasSelectedBefore) {
    HGDIOBJ first = memory.SelectObject(bitmap);
    EXPECT_NE(first, nullptr);
    EXPECT_EQ(memory.SelectObject(first), bitmap.m_hObject);

    CBrush brush(kRed);
    HGDIOBJ firstBrush = memory.SelectObject(brush);
    EXPECT_NE(firstBrush, nullptr);
    EXPECT_EQ(memory.SelectObject(firstBrush), brush.m_hObject);
}

TEST_F(DeviceContext, ABitmapSelectedIntoOneContextIsRefusedByAnother) {
    CDC other;
    ASSERT_TRUE(other.CreateCompatibleDC(&screen));
    {
        CSelection here(memory, bitmap);
        CSelection there(other, bitmap);
        EXPECT_TRUE(here);
        EXPECT_FALSE(there);
    }
    CSelection there(other, bitmap);
    EXPECT_TRUE(there);
}

TEST_F(DeviceContext, ABrushMayBeSelectedIntoManyContexts) {
    CDC other;
    CBrush brush(kRed);
    ASSERT_TRUE(other.CreateCompatibleDC(&screen));
    CSelection here(memory, brush);
    CSelection there(other, brush);
    EXPECT_TRUE(here);
    EXPECT_TRUE(there);
}

TEST_F(DeviceContext, ADisplayTakesNoBitmap) {
    CSelection selection(screen, bitmap);
    EXPECT_FALSE(selection);
}

TEST_F(DeviceContext, DeletingAContextLetsGoOfItsBitmap) {
    CDC other;
    ASSERT_TRUE(other.CreateCompatibleDC(&screen));
    other.SelectObject(bitmap);
    ASSERT_TRUE(other.DeleteDC());
    CSelection selection(memory, bitmap);
    EXPECT_TRUE(selection);
}

TEST_F(DeviceContext, ADeletedContextIsRefusedEverywhere) {
    HDC stale = memory.m_hDC;
    ASSERT_TRUE(memory.DeleteDC());
    EXPECT_FALSE(DeleteDC(stale));
    EXPECT_EQ(CreateCompatibleDC(stale), nullptr);
    EXPECT_EQ(CreateCompatibleBitmap(stale, 4, 4), nullptr);
    EXPECT_EQ(SelectObject(stale, bitmap), nullptr);
    EXPECT_FALSE(PatBlt(stale, 0, 0, 1, 1, WHITENESS));
    EXPECT_EQ(GetPixel(stale, 0, 0), CLR_INVALID);
    EXPECT_FALSE(BitBlt(screen, 0, 0, 1, 1, stale, 0, 0, SRCCOPY));
}

TEST_F(DeviceContext, AMemoryContextIsNotReleasedAsAWindowsContext) {
    EXPECT_EQ(ReleaseDC(nullptr, memory), 0);
}

TEST_F(DeviceContext, ColoursAreBlackOnWhiteAndExchanged) {
    EXPECT_EQ(GetTextColor(memory), kBlack);
    EXPECT_EQ(GetBkColor(memory), kWhite);
    EXPECT_EQ(SetTextColor(memory, kRed), kBlack);
    EXPECT_EQ(SetBkColor(memory, kBlue), kWhite);
    EXPECT_EQ(GetTextColor(memory), kRed);
    EXPECT_EQ(GetBkColor(memory), kBlue);
}

TEST_F(DeviceContext, AWrapperTakesOneHandleAndGivesItBack) {
    CDC other;
    EXPECT_FALSE(other.Attach(nullptr));
    HDC handle = memory.Detach();
    EXPECT_EQ(memory.m_hDC, nullptr);
    EXPECT_TRUE(other.Attach(handle));
    EXPECT_FALSE(other.CreateCompatibleDC(&screen));
    EXPECT_EQ(other.m_hDC, handle);
    EXPECT_FALSE(memory.DeleteDC());
}

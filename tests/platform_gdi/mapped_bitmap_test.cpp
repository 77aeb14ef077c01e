#include <gtest/gtest.h>

#include "tests/platform_gdi/res/resource.h"
#include "tests/support/pixels.h"

using namespace test;

namespace {

constexpr COLORREF kOdd = RGB(0x10, 0x21, 0x31);
constexpr COLORREF kIvory = RGB(255, 255, 240);

struct Case {
    UINT id;
    bool hasColorTable;
};
constexpr Case kPictures[] = {
    {IDB_4_BITS, true},   {IDB_4_BITS_ALL_COLORS, true}, {IDB_8_BITS, true},
    {IDB_16_BITS, false}, {IDB_24_BITS, false},          {IDB_32_BITS, false},
};

Pixels load(UINT id, std::vector<COLORMAP> map) {
    CBitmap bitmap;
    bitmap.LoadMappedBitmap(id, 0, map.data(), static_cast<int>(map.size()));
    return pixelsOf(bitmap);
}

Pixels sample(COLORREF white) {
    return {3, 2, {white, kRed, kBlue, kBlack, white, kOdd}};
}

}  // namespace

TEST(MappedBitmap, PicturesOfAllDepthsAreTheSame) {
    for (Case one : kPictures) EXPECT_EQ(load(one.id, {{kWhite, kWhite}}), sample(kWhite)) << one.id;
    EXPECT_EQ(picture(load(IDB_1_BIT, {{kWhite, kWhite}})), "w.w\n.w.\n");
}

TEST(MappedBitmap, AColourOfTheTableBecomesAnother) {
    for (Case one : kPictures) {
        EXPECT_EQ(load(one.id, {{kWhite, kIvory}}), sample(one.hasColorTable ? kIvory : kWhite)) << one.id;
    }
    Pixels mono = load(IDB_1_BIT, {{kWhite, kIvory}});
    ASSERT_EQ(mono.colors.size(), 6u);
    EXPECT_EQ(mono.at(0, 0), kIvory);
    EXPECT_EQ(mono.at(1, 0), kBlack);
}

TEST(MappedBitmap, WhiteFollowsTheWindowColour) {
    for (COLORREF window : {kWhite, kIvory, kBlack}) {
        SystemColor changed(COLOR_WINDOW, window);
        EXPECT_EQ(load(IDB_4_BITS, {{kWhite, GetSysColor(COLOR_WINDOW)}}), sample(window));
    }
}

TEST(MappedBitmap, OnlyTheVeryColourIsMapped) {
    EXPECT_EQ(load(IDB_4_BITS, {{RGB(254, 255, 255), kGreen}, {RGB(0x31, 0x21, 0x10), kGreen}}),
              sample(kWhite));
}

TEST(MappedBitmap, TheFirstMatchingEntryCountsAndResultsAreNotMappedAgain) {
    Pixels pixels = load(IDB_4_BITS, {{kWhite, kRed}, {kWhite, kGreen}, {kRed, kBlue}});
    EXPECT_EQ(pixels, (Pixels{3, 2, {kRed, kBlue, kBlue, kBlack, kRed, kOdd}}));
}

TEST(MappedBitmap, IsABitmapOfTheDisplay) {
    CBitmap bitmap;
    COLORMAP map{kWhite, kIvory};
    ASSERT_TRUE(bitmap.LoadMappedBitmap(IDB_1_BIT, 0, &map, 1));
    BITMAP form{};
    ASSERT_TRUE(bitmap.GetBitmap(&form));
    EXPECT_EQ(form.bmBitsPixel, 32);
    EXPECT_EQ(form.bmWidth, 3);
    EXPECT_EQ(form.bmHeight, 2);
}

TEST(MappedBitmap, AMissingOneIsNull) {
    CBitmap bitmap;
    COLORMAP map{kWhite, kIvory};
    EXPECT_FALSE(bitmap.LoadMappedBitmap(IDB_MISSING, 0, &map, 1));
    EXPECT_EQ(bitmap.m_hObject, nullptr);
    EXPECT_EQ(CreateMappedBitmap(nullptr, IDB_MISSING, 0, &map, 1), nullptr);
}

TEST(MappedBitmap, IsNotLoadedOverAnother) {
    CBitmap bitmap;
    COLORMAP map{kWhite, kWhite};
    ASSERT_TRUE(bitmap.LoadMappedBitmap(IDB_1_BIT, 0, &map, 1));
    EXPECT_FALSE(bitmap.LoadMappedBitmap(IDB_4_BITS, 0, &map, 1));
    EXPECT_EQ(picture(bitmap), "w.w\n.w.\n");
}

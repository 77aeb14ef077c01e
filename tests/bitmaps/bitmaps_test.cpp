// What the check tree relies on in the plug-in's bitmaps: sizes, places of the frames, colours, equal pairs.
#include <gtest/gtest.h>

#include <set>

#include "tests/support/pixels.h"

using namespace test;

namespace {

constexpr COLORREF kDarkGrey = RGB(128, 128, 128);
constexpr COLORREF kLightGrey = RGB(192, 192, 192);
constexpr COLORREF kYellow = RGB(255, 255, 0);

enum { kCheckBoxes = 2048, kTreePictures = 2049, kSwatchFrame = 2050, kBlank = 2054 };

Pixels load(UINT id) {
    CBitmap bitmap;
    COLORMAP map{kWhite, kWhite};
    bitmap.LoadMappedBitmap(id, 0, &map, 1);
    return pixelsOf(bitmap);
}

Pixels cell(const Pixels& strip, int index) {
    Pixels pixels{16, 16, {}};
    for (int y = 0; y < 16; ++y) {
        for (int x = 0; x < 16; ++x) pixels.colors.push_back(strip.at(index * 16 + x, y));
    }
    return pixels;
}

// The edges, inclusive, of the frames.
struct Frame {
    int left, top, right, bottom;
    bool holds(int x, int y) const { return x >= left && x <= right && y >= top && y <= bottom; }
    bool edge(int x, int y) const {
        return holds(x, y) && (x == left || x == right || y == top || y == bottom);
    }
};

// The cell shows the frame in its colour, white around it, and inside it nothing but white and the given
// colours.
void expectFrame(const Pixels& pixels, Frame frame, COLORREF color, std::set<COLORREF> inside) {
    inside.insert(kWhite);
    for (int y = 0; y < 16; ++y) {
        for (int x = 0; x < 16; ++x) {
            COLORREF found = pixels.at(x, y);
            if (frame.edge(x, y)) {
                EXPECT_EQ(found, color) << x << "," << y;
            } else if (!frame.holds(x, y)) {
                EXPECT_EQ(found, kWhite) << x << "," << y;
            } else {
                EXPECT_TRUE(inside.contains(found)) << x << "," << y;
            }
        }
    }
}

int count(const Pixels& pixels, COLORREF color) {
    return static_cast<int>(std::count(pixels.colors.begin(), pixels.colors.end(), color));
}

std::set<COLORREF> colors(const Pixels& pixels) {
    return {pixels.colors.begin(), pixels.colors.end()};
}

Pixels recolored(Pixels pixels, COLORREF from, COLORREF to) {
    std::replace(pixels.colors.begin(), pixels.colors.end(), from, to);
    return pixels;
}

constexpr Frame kCheckBox{3, 3, 13, 13};
constexpr Frame kDropFrame{1, 2, 13, 13};

}  // namespace

TEST(Bitmaps, HaveTheirSizesAndFourBits) {
    struct Case {
        int id, width;
    };
    for (Case one :
         {Case{kCheckBoxes, 112}, Case{kTreePictures, 96}, Case{kSwatchFrame, 16}, Case{kBlank, 16}}) {
        HRSRC resource = FindResourceW(nullptr, MAKEINTRESOURCEW(one.id), RT_BITMAP);
        auto* header = static_cast<const BITMAPINFOHEADER*>(LockResource(LoadResource(nullptr, resource)));
        ASSERT_NE(header, nullptr) << one.id;
        EXPECT_EQ(header->biWidth, one.width) << one.id;
        EXPECT_EQ(header->biHeight, 16) << one.id;
        EXPECT_EQ(header->biBitCount, 4) << one.id;
    }
}

TEST(Bitmaps, UseTheStandardColours) {
    const std::set<COLORREF> standard{
        RGB(0, 0, 0),       RGB(128, 0, 0),   RGB(0, 128, 0),   RGB(128, 128, 0),
        RGB(0, 0, 128),     RGB(128, 0, 128), RGB(0, 128, 128), RGB(192, 192, 192),
        RGB(128, 128, 128), RGB(255, 0, 0),   RGB(0, 255, 0),   RGB(255, 255, 0),
        RGB(0, 0, 255),     RGB(255, 0, 255), RGB(0, 255, 255), RGB(255, 255, 255),
    };
    for (int id : {kCheckBoxes, kTreePictures, kSwatchFrame, kBlank}) {
        for (COLORREF color : colors(load(static_cast<UINT>(id))))
            EXPECT_TRUE(standard.contains(color)) << id;
    }
}

TEST(Bitmaps, TheFirstCheckBoxIsEmpty) {
    EXPECT_EQ(colors(cell(load(kCheckBoxes), 0)), std::set<COLORREF>{kWhite});
}

TEST(Bitmaps, UncheckedBoxesAreEmptyFrames) {
    Pixels strip = load(kCheckBoxes);
    for (int index : {1, 2}) expectFrame(cell(strip, index), kCheckBox, kDarkGrey, {});
}

TEST(Bitmaps, CheckedBoxesHoldABlackTickAndPartlyCheckedOnesTheSameInDarkGrey) {
    Pixels strip = load(kCheckBoxes);
    for (int index : {3, 4}) {
        Pixels checked = cell(strip, index);
        expectFrame(checked, kCheckBox, kDarkGrey, {kBlack});
        EXPECT_GT(count(checked, kBlack), 9);
        EXPECT_EQ(cell(strip, index + 2), recolored(checked, kBlack, kDarkGrey));
    }
}

TEST(Bitmaps, TheLeafPictureIsASmallRedDropInTheMiddleOfAFrame) {
    Pixels leaf = cell(load(kTreePictures), 0);
    expectFrame(leaf, kDropFrame, kBlack, {kRed});
    EXPECT_GT(count(leaf, kRed), 9);
    for (int y = 0; y < 16; ++y) {
        for (int x = 0; x <= 14; ++x) EXPECT_EQ(leaf.at(x, y), leaf.at(14 - x, y)) << x << "," << y;
    }
}

TEST(Bitmaps, TheDisabledLeafPictureIsTheEmptyFrame) {
    expectFrame(cell(load(kTreePictures), 1), kDropFrame, kBlack, {});
}

TEST(Bitmaps, FoldersComeInEqualPairsOfGreyYellowAndBlack) {
    Pixels strip = load(kTreePictures);
    for (int index : {2, 4}) {
        Pixels folder = cell(strip, index);
        EXPECT_EQ(folder, cell(strip, index + 1));
        EXPECT_EQ(colors(folder), (std::set<COLORREF>{kWhite, kDarkGrey, kLightGrey, kYellow, kBlack}));
    }
    EXPECT_NE(cell(strip, 2), cell(strip, 4));
}

TEST(Bitmaps, TheSwatchFrameIsBlackAndWhiteInside) {
    expectFrame(load(kSwatchFrame), Frame{2, 3, 13, 12}, kBlack, {});
}

TEST(Bitmaps, TheBlankOneIsWhite) {
    EXPECT_EQ(colors(load(kBlank)), std::set<COLORREF>{kWhite});
}

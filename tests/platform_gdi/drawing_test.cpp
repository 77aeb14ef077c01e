#include <gtest/gtest.h>

#include "tests/support/pixels.h"

using namespace test;

namespace {

struct Drawing : testing::Test {
    CClientDC screen{nullptr};
    CDC memory;
    CDC from;

    void SetUp() override {
        ASSERT_TRUE(memory.CreateCompatibleDC(&screen));
        ASSERT_TRUE(from.CreateCompatibleDC(&screen));
    }
};

constexpr const char* kBlank = "....\n....\n....\n";
// Every pixel differs from its neighbours.
constexpr const char* kSample = "rgbw\ngbwr\nbwrg\n";

}  // namespace

TEST_F(Drawing, FillingIsCutAtTheEdges) {
    struct Case {
        int x, y, width, height;
        const char* expected;
    };
    const Case cases[] = {
        {0, 0, 4, 3, "rrrr\nrrrr\nrrrr\n"},
        {1, 1, 2, 1, "....\n.rr.\n....\n"},
        {3, 2, 14, 12, "....\n....\n...r\n"},
        {-2, -1, 3, 2, "r...\n....\n....\n"},
        {-5, -5, 100, 100, "rrrr\nrrrr\nrrrr\n"},
        {4, 0, 3, 3, kBlank},
        {0, 3, 3, 3, kBlank},
        {-3, 0, 3, 3, kBlank},
        {0, 0, 0, 3, kBlank},
        {-0x40000000, -0x40000000, 0x40000001, 0x40000001, "r...\n....\n....\n"},
    };
    CBrush red(kRed);
    CSelection brush(memory, red);
    for (const Case& one : cases) {
        CBitmap bitmap;
        paint(bitmap, kBlank);
        {
            CSelection target(memory, bitmap);
            EXPECT_TRUE(memory.PatBlt(one.x, one.y, one.width, one.height, PATCOPY));
        }
        EXPECT_EQ(picture(bitmap), one.expected)
            << one.x << "," << one.y << " " << one.width << "x" << one.height;
    }
}

TEST_F(Drawing, CopyingIsCutAtTheEdgesOfBothBitmaps) {
    struct Case {
        int x, y, width, height, sourceX, sourceY;
        const char* expected;
    };
    const Case cases[] = {
        {0, 0, 4, 3, 0, 0, kSample},
        {1, 0, 2, 2, 0, 1, ".gb.\n.bw.\n....\n"},
        {2, 1, 4, 3, 0, 0, "....\n..rg\n..gb\n"},
        {-1, -1, 4, 3, 0, 0, "bwr.\nwrg.\n....\n"},
        {0, 0, 4, 3, 2, 1, "wr..\nrg..\n....\n"},
        {0, 0, 4, 3, -1, -1, "....\n.rgb\n.gbw\n"},
        {-1, 0, 4, 3, -2, 0, ".rg.\n.gb.\n.bw.\n"},
        {4, 0, 4, 3, 0, 0, kBlank},
        {0, 0, 4, 3, 4, 0, kBlank},
        {0, 0, 0, 3, 0, 0, kBlank},
    };
    CBitmap sample;
    paint(sample, kSample);
    CSelection source(from, sample);
    for (const Case& one : cases) {
        CBitmap bitmap;
        paint(bitmap, kBlank);
        {
            CSelection target(memory, bitmap);
            EXPECT_TRUE(
                memory.BitBlt(one.x, one.y, one.width, one.height, &from, one.sourceX, one.sourceY, SRCCOPY));
        }
        EXPECT_EQ(picture(bitmap), one.expected) << one.x << "," << one.y << " " << one.width << "x"
                                                 << one.height << " of " << one.sourceX << "," << one.sourceY;
    }
}

TEST_F(Drawing, ABitmapMayBeCopiedOntoItself) {
    struct Case {
        int x, y, sourceX, sourceY;
        const char* expected;
    };
    const Case cases[] = {
        {1, 1, 0, 0, "rgbw\ngrgb\nbgbw\n"},
        {0, 0, 1, 1, "bwrw\nwrgr\nbwrg\n"},
        {1, 0, 0, 0, "rrgb\nggbw\nbbwr\n"},
        {0, 0, 1, 0, "gbww\nbwrr\nwrgg\n"},
    };
    for (const Case& one : cases) {
        CBitmap bitmap;
        paint(bitmap, kSample);
        {
            CSelection target(memory, bitmap);
            EXPECT_TRUE(memory.BitBlt(one.x, one.y, 4, 3, &memory, one.sourceX, one.sourceY, SRCCOPY));
        }
        EXPECT_EQ(picture(bitmap), one.expected) << one.x << "," << one.y;
    }
}

TEST_F(Drawing, FillingWithWhiteAndBlackNeedsNoBrush) {
    CBitmap bitmap;
    paint(bitmap, "rr\nrr\n");
    {
        CSelection target(memory, bitmap);
        EXPECT_TRUE(memory.PatBlt(0, 0, 1, 2, WHITENESS));
        EXPECT_TRUE(memory.PatBlt(1, 0, 1, 1, BLACKNESS));
    }
    EXPECT_EQ(picture(bitmap), "w.\nwr\n");
}

TEST_F(Drawing, AFreshContextFillsWithWhite) {
    CBitmap bitmap;
    paint(bitmap, "rr\n");
    {
        CSelection target(memory, bitmap);
        EXPECT_TRUE(memory.PatBlt(0, 0, 1, 1, PATCOPY));
    }
    EXPECT_EQ(picture(bitmap), "wr\n");
}

TEST_F(Drawing, PixelsAreSetInsideAndRefusedOutside) {
    CBitmap bitmap;
    paint(bitmap, kBlank);
    CSelection target(memory, bitmap);
    EXPECT_EQ(memory.SetPixel(3, 2, RGB(1, 2, 3)), RGB(1, 2, 3));
    EXPECT_EQ(memory.GetPixel(3, 2), RGB(1, 2, 3));
    struct Case {
        int x, y;
    };
    for (Case outside : {Case{-1, 0}, Case{0, -1}, Case{4, 0}, Case{0, 3}, Case{0x7fffffff, 0}}) {
        memory.SetPixel(outside.x, outside.y, kRed);
        EXPECT_EQ(memory.GetPixel(outside.x, outside.y), CLR_INVALID) << outside.x << "," << outside.y;
    }
}

TEST_F(Drawing, AMonochromeBitmapKnowsTheBackgroundColourFromTheRest) {
    CBitmap sample;
    CBitmap mono;
    paint(sample, "wrb.\n");
    ASSERT_TRUE(mono.CreateCompatibleBitmap(&memory, 4, 1));
    {
        CSelection source(from, sample);
        CSelection target(memory, mono);
        SetBkColor(from, kRed);
        EXPECT_TRUE(memory.BitBlt(0, 0, 4, 1, &from, 0, 0, SRCCOPY));
    }
    EXPECT_EQ(picture(mono), ".w..\n");
}

TEST_F(Drawing, AMonochromeBitmapIsCopiedInTheTargetsColours) {
    CBitmap mono;
    CBitmap bitmap;
    ASSERT_TRUE(mono.CreateCompatibleBitmap(&from, 4, 1));
    paint(bitmap, "....\n");
    {
        CSelection source(from, mono);
        CSelection target(memory, bitmap);
        ASSERT_TRUE(from.PatBlt(1, 0, 2, 1, WHITENESS));
        ASSERT_TRUE(from.PatBlt(0, 0, 1, 1, BLACKNESS));
        ASSERT_TRUE(from.PatBlt(3, 0, 1, 1, BLACKNESS));
        SetTextColor(memory, kGreen);
        SetBkColor(memory, kBlue);
        EXPECT_TRUE(memory.BitBlt(0, 0, 4, 1, &from, 0, 0, SRCCOPY));
    }
    EXPECT_EQ(picture(bitmap), "gbbg\n");
}

TEST_F(Drawing, APixelOfAMonochromeBitmapIsBlackOrWhite) {
    CBitmap mono;
    ASSERT_TRUE(mono.CreateCompatibleBitmap(&memory, 2, 1));
    CSelection target(memory, mono);
    EXPECT_EQ(memory.SetPixel(0, 0, RGB(250, 250, 250)), kWhite);
    EXPECT_EQ(memory.SetPixel(1, 0, RGB(5, 5, 5)), kBlack);
    EXPECT_EQ(memory.GetPixel(0, 0), kWhite);
    EXPECT_EQ(memory.GetPixel(1, 0), kBlack);
}

// Images drawn with blend modes: every drawing library mixes as blendedPixel says.
#include <gtest/gtest.h>

#include <vector>

#include "canvas/pixel_mixing.h"
#include "support/blend_modes.h"
#include "support/canvas_picture.h"

using namespace test;

namespace {

const AAffine kAsIs;
constexpr int kClose = 2;

const std::vector<std::uint32_t> kOpaque{0xff000000, 0xffffffff, 0xff808080, 0xffff0000, 0xff00ff00,
                                         0xff3366cc, 0xffcc9933, 0xff20c0a0, 0xff404041, 0xfff0e8ff};
const std::vector<std::uint32_t> kTranslucent{0x80000000, 0x80808080, 0x80800000, 0xc0306090,
                                              0xa0a08040, 0x40103040, 0x60505050, 0xe0e000e0};

// The tops side by side.
AImage rowOf(const std::vector<std::uint32_t>& tops) {
    AImage image(static_cast<int>(tops.size()), 1);
    for (int x = 0; x < image.width(); ++x) image.at(x, 0) = tops[static_cast<std::size_t>(x)];
    return image;
}

testing::AssertionResult isNear(std::uint32_t actual, std::uint32_t expected, int tolerance = kClose) {
    for (int shift = 0; shift < 32; shift += 8) {
        const int apart = static_cast<int>(actual >> shift & 255) - static_cast<int>(expected >> shift & 255);
        if (std::abs(apart) > tolerance)
            return testing::AssertionFailure()
                   << std::hex << actual << " instead of " << expected << std::dec;
    }
    return testing::AssertionSuccess();
}

// Each top on each bottom, in every mode.
void expectBlends(const std::vector<std::uint32_t>& tops, const std::vector<std::uint32_t>& bottoms) {
    const AImage image = rowOf(tops);
    for (const BlendMode& one : kBlendModes) {
        for (const std::uint32_t bottom : bottoms) {
            Picture picture(image.width(), 1);
            for (int x = 0; x < image.width(); ++x) picture.image.at(x, 0) = bottom;
            picture.canvas.drawImage(image, kAsIs, 1, false, one.mode);
            for (int x = 0; x < image.width(); ++x) {
                const std::uint32_t top = image.at(x, 0);
                EXPECT_TRUE(isNear(picture.at(x, 0), blendedPixel(one.mode, top, bottom)))
                    << one.name << std::hex << ' ' << top << " over " << bottom;
            }
        }
    }
}

}  // namespace

TEST(CanvasBlending, OpaqueOverOpaque) {
    expectBlends(kOpaque, kOpaque);
}

TEST(CanvasBlending, TranslucentOverOpaque) {
    expectBlends(kTranslucent, kOpaque);
}

TEST(CanvasBlending, OpaqueOverTranslucent) {
    expectBlends(kOpaque, kTranslucent);
}

TEST(CanvasBlending, TranslucentOverTranslucent) {
    expectBlends(kTranslucent, kTranslucent);
}

TEST(CanvasBlending, AnImageThatShowsThroughBlendsInPart) {
    for (const BlendMode& one : kBlendModes) {
        for (const std::uint32_t top : {0xff000000u, 0xffffffffu, 0xffff0000u, 0xff3366ccu, 0xffcc9933u}) {
            Picture picture(1, 1);
            picture.image.at(0, 0) = 0xff20c0a0;
            picture.canvas.drawImage(rowOf({top}), kAsIs, 0.4, false, one.mode);
            // Two fifths of what it would be in full, and the rest as before.
            const std::uint32_t expected =
                over(scaledPixel(blendedPixel(one.mode, top, 0xff20c0a0), 102), 0xff20c0a0);
            EXPECT_TRUE(isNear(picture.at(0, 0), expected, 3)) << one.name << std::hex << ' ' << top;
        }
    }
}

TEST(CanvasBlending, OnNothingColorsStayAsTheyAre) {
    expectBlends(kOpaque, {0});
    expectBlends(kTranslucent, {0});
}

TEST(CanvasBlending, NothingElseChangesAroundTheImageOrOutsideTheClip) {
    // Modes that would empty or darken what they do not cover, were they not kept to the image.
    for (const EBlend mode : {EBlend::multiply, EBlend::difference, EBlend::luminosity}) {
        Picture picture(5, 2);
        picture.canvas.drawImage(imageOf("ggggg\nggggg\n"), kAsIs, 1, false);
        picture.canvas.pushClip(APath::rectangle({0, 0, 5, 1}), kAsIs, EFillRule::nonZero);
        picture.canvas.drawImage(imageOf(".k.\nkkk\n"), AAffine::translation(1, 0), 1, false, mode);
        picture.canvas.popClip();
        const std::string middle = mode == EBlend::difference ? "g" : "k";
        EXPECT_EQ(picture.rows(), "gg" + middle + "gg\nggggg\n");
    }
}

TEST(CanvasBlending, WhatIsDrawnNextDoesNotBlend) {
    Picture picture(2, 1);
    picture.canvas.drawImage(imageOf("gg\n"), kAsIs, 1, false);
    picture.canvas.drawImage(imageOf("rr\n"), kAsIs, 1, false, EBlend::multiply);
    EXPECT_EQ(picture.rows(), "kk\n");
    picture.canvas.drawImage(imageOf("r.\n"), kAsIs, 1, false);
    picture.canvas.fill(APath::rectangle({1, 0, 2, 1}), kAsIs, {AColor(RGB(0, 0, 255))}, EFillRule::nonZero);
    EXPECT_EQ(picture.rows(), "rb\n");
}

TEST(CanvasBlending, PixelsWithoutAlphaAreOpaque) {
    for (const BlendMode& one : kBlendModes) {
        std::vector<DWORD> rows(2, 0x3366cc);
        {
            ACanvas canvas(APixels{rows.data(), 2, 1, false});
            canvas.drawImage(rowOf({0xffcc9933, 0x80800000}), kAsIs, 1, false, one.mode);
        }
        const auto expected = [&](std::uint32_t top) {
            return blendedPixel(one.mode, top, 0xff3366cc) & 0xffffff;
        };
        EXPECT_TRUE(isNear(rows[0] & 0xffffff, expected(0xffcc9933))) << one.name;
        EXPECT_TRUE(isNear(rows[1] & 0xffffff, expected(0x80800000))) << one.name;
    }
}

// The formulas of the blend modes, by numbers worked out by hand.
#include "canvas/pixel_blending.h"

#include <gtest/gtest.h>

#include <random>

#include "canvas/pixel_mixing.h"
#include "support/blend_modes.h"

using namespace test;

namespace {

std::uint32_t randomPixel(std::mt19937& random) {
    const std::uint32_t alpha = random() % 4 == 0 ? 255 : random() % 256;
    return alpha << 24 | random() % (alpha + 1) << 16 | random() % (alpha + 1) << 8 | random() % (alpha + 1);
}

}  // namespace

TEST(PixelBlending, ComponentsMixOneByOne) {
    constexpr std::uint32_t kTop = 0xff8040c0;
    constexpr std::uint32_t kBottom = 0xff408080;
    EXPECT_EQ(blendedPixel(EBlend::normal, kTop, kBottom), kTop);
    EXPECT_EQ(blendedPixel(EBlend::multiply, kTop, kBottom), 0xff202060);
    EXPECT_EQ(blendedPixel(EBlend::screen, kTop, kBottom), 0xffa0a0e0);
    EXPECT_EQ(blendedPixel(EBlend::darken, kTop, kBottom), 0xff404080);
    EXPECT_EQ(blendedPixel(EBlend::lighten, kTop, kBottom), 0xff8080c0);
    EXPECT_EQ(blendedPixel(EBlend::difference, kTop, kBottom), 0xff404040);
    EXPECT_EQ(blendedPixel(EBlend::exclusion, kTop, kBottom), 0xff80807f);
}

TEST(PixelBlending, OverlayAsksTheBottomAndHardLightTheTopWhetherToDarken) {
    EXPECT_EQ(blendedPixel(EBlend::overlay, 0xff8040c0, 0xff408080), 0xff4041c0);
    EXPECT_EQ(blendedPixel(EBlend::hardLight, 0xff8040c0, 0xff408080), 0xff4140c0);
}

TEST(PixelBlending, DodgingBrightensAllButBlack) {
    // The top is white, a fifth and black over black, a fifth and white.
    EXPECT_EQ(blendedPixel(EBlend::colorDodge, 0xffffffff, 0xff0033ff), 0xff00ffff);
    EXPECT_EQ(blendedPixel(EBlend::colorDodge, 0xff333333, 0xff0033ff), 0xff0040ff);
    EXPECT_EQ(blendedPixel(EBlend::colorDodge, 0xff000000, 0xff0033ff), 0xff0033ff);
}

TEST(PixelBlending, BurningDarkensAllButWhite) {
    EXPECT_EQ(blendedPixel(EBlend::colorBurn, 0xff000000, 0xff00ccff), 0xff0000ff);
    EXPECT_EQ(blendedPixel(EBlend::colorBurn, 0xff999999, 0xff00ccff), 0xff00aaff);
    EXPECT_EQ(blendedPixel(EBlend::colorBurn, 0xffffffff, 0xff00ccff), 0xff00ccff);
}

TEST(PixelBlending, SoftLightHasThreeBranches) {
    // A dark top; a bright one over a dark bottom; a bright one over a bright bottom.
    EXPECT_EQ(blendedPixel(EBlend::softLight, 0xff33cccc, 0xff993399), 0xff7459b4);
}

TEST(PixelBlending, HueSaturationAndLuminosityComeFromEitherPicture) {
    constexpr std::uint32_t kRed = 0xffff0000;
    constexpr std::uint32_t kBlueGray = 0xff336699;
    EXPECT_EQ(blendedPixel(EBlend::hue, kRed, kBlueGray), 0xffa43e3e);
    EXPECT_EQ(blendedPixel(EBlend::saturation, kRed, kBlueGray), 0xff0072e4);
    EXPECT_EQ(blendedPixel(EBlend::color, kRed, kBlueGray), 0xffff1717);
    EXPECT_EQ(blendedPixel(EBlend::luminosity, kRed, kBlueGray), 0xff235689);
}

TEST(PixelBlending, GrayHasNeitherHueNorSaturation) {
    constexpr std::uint32_t kGray = 0xff808080;
    constexpr std::uint32_t kBlueGray = 0xff336699;
    for (const EBlend mode : {EBlend::hue, EBlend::saturation, EBlend::color})
        EXPECT_EQ(blendedPixel(mode, kGray, kBlueGray), 0xff5c5c5c);
    for (const EBlend mode : {EBlend::hue, EBlend::saturation}) {
        EXPECT_EQ(blendedPixel(mode, kBlueGray, kGray), kGray);
    }
    EXPECT_EQ(blendedPixel(EBlend::luminosity, kBlueGray, kGray), 0xff5c5c5c);
}

TEST(PixelBlending, ATranslucentTopMixesInPart) {
    EXPECT_EQ(blendedPixel(EBlend::multiply, 0x80000000, 0xff804020), 0xff402010);
    EXPECT_EQ(blendedPixel(EBlend::multiply, 0x80808080, 0xff804020), 0xff804020);
    EXPECT_EQ(blendedPixel(EBlend::difference, 0x80808080, 0xffffffff), 0xff7f7f7f);
}

TEST(PixelBlending, EachKeepsItsColorWhereTheOtherDoesNotCover) {
    // Half red over half blue: three quarters are covered, a quarter by both.
    EXPECT_EQ(blendedPixel(EBlend::multiply, 0x80800000, 0x80000080), 0xc0400040);
    EXPECT_EQ(blendedPixel(EBlend::screen, 0x80800000, 0x80000080), 0xc0800080);
    EXPECT_EQ(blendedPixel(EBlend::normal, 0x80800000, 0x80000080), 0xc0800040);
}

TEST(PixelBlending, WhatLiesOnNothingKeepsItsColorAndNothingChangesNothing) {
    for (const BlendMode& one : kBlendModes) {
        for (const std::uint32_t pixel : {0xff336699u, 0x80402010u, 0x01010001u}) {
            EXPECT_EQ(blendedPixel(one.mode, pixel, 0), pixel) << one.name;
            EXPECT_EQ(blendedPixel(one.mode, 0, pixel), pixel) << one.name;
        }
    }
}

TEST(PixelBlending, CoversAsMuchInEveryModeAndStaysMultiplied) {
    std::mt19937 random(7);
    for (int i = 0; i < 20000; ++i) {
        const std::uint32_t top = randomPixel(random);
        const std::uint32_t bottom = randomPixel(random);
        const std::uint32_t alpha = over(top, bottom) >> 24;
        for (const BlendMode& one : kBlendModes) {
            const std::uint32_t mixed = blendedPixel(one.mode, top, bottom);
            const bool multiplied =
                (mixed >> 16 & 255) <= alpha && (mixed >> 8 & 255) <= alpha && (mixed & 255) <= alpha;
            ASSERT_TRUE(mixed >> 24 == alpha && multiplied)
                << one.name << std::hex << ' ' << top << " over " << bottom << ": " << mixed;
        }
    }
}

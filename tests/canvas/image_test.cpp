#include "canvas/image.h"

#include <gtest/gtest.h>

#include <new>
#include <random>

#include "support/canvas_picture.h"
#include "support/small_jpegs.h"

using namespace test;

namespace {

AImage decode(std::string_view bytes) {
    return decodeImage({reinterpret_cast<const unsigned char*>(bytes.data()), bytes.size()});
}

// What is left of a damaged file, if anything, has the file's size, or one that another file could have had.
void expectHarmless(const AImage& image) {
    EXPECT_LE(image.pixels().size(), AImage::kMostPixels);
    EXPECT_EQ(image.pixels().size(),
              static_cast<std::size_t>(image.width()) * static_cast<std::size_t>(image.height()));
}

std::string bytesOf(std::span<const unsigned char> bytes) {
    return {bytes.begin(), bytes.end()};
}

}  // namespace

TEST(Image, IsTransparentAtFirst) {
    const AImage image(3, 2);
    EXPECT_EQ(image.width(), 3);
    EXPECT_EQ(image.height(), 2);
    EXPECT_EQ(image.at(2, 1), 0U);
    EXPECT_FALSE(image.empty());
}

TEST(Image, WithoutPixelsIsEmpty) {
    for (const AImage& image : {AImage(), AImage(0, 5), AImage(5, 0), AImage(-1, 5), AImage(5, -1)}) {
        EXPECT_TRUE(image.empty());
        EXPECT_EQ(image.width(), 0);
        EXPECT_EQ(image.height(), 0);
    }
}

TEST(Image, TooLargeIsOutOfMemory) {
    EXPECT_THROW(AImage(1 << 15, (1 << 13) + 1), std::bad_alloc);
    EXPECT_THROW(AImage(0x7fffffff, 0x7fffffff), std::bad_alloc);
}

TEST(ImagePng, ComesBackAsItWas) {
    const AImage opaque = imageOf("rgbwk\nkwbgr\n");
    EXPECT_EQ(rowsOf(decode(encodePng(opaque))), rowsOf(opaque));
    const AImage holes = imageOf("r.b.k\n.w.g.\n");
    EXPECT_EQ(rowsOf(decode(encodePng(holes))), rowsOf(holes));
}

TEST(ImagePng, OpaqueOnesHoldThreeChannelsOthersFour) {
    // The byte behind the sizes and the depth tells the kind.
    EXPECT_EQ(encodePng(imageOf("rg\n"))[25], 2);
    EXPECT_EQ(encodePng(imageOf("r.\n"))[25], 6);
}

TEST(ImagePng, SeeThroughColoursComeBackWithinAStepOfTheirAlpha) {
    AImage image(256, 4);
    for (int alpha = 0; alpha < 256; ++alpha) {
        for (int y = 0; y < 4; ++y) {
            const auto a = static_cast<std::uint32_t>(alpha);
            const std::uint32_t value = a * static_cast<std::uint32_t>(y) / 3;
            image.at(alpha, y) = a << 24 | value << 16 | (a - value) << 8 | value;
        }
    }
    const AImage back = decode(encodePng(image));
    ASSERT_EQ(back.width(), 256);
    for (int y = 0; y < 4; ++y) {
        for (int x = 0; x < 256; ++x) {
            EXPECT_EQ(alphaOf(back.at(x, y)), x);
            EXPECT_NEAR(redOf(back.at(x, y)), redOf(image.at(x, y)), 1) << x << "," << y;
            EXPECT_NEAR(greenOf(back.at(x, y)), greenOf(image.at(x, y)), 1) << x << "," << y;
        }
    }
}

TEST(ImagePng, ALargeDrawingComesBack) {
    AImage image(500, 300);
    for (int y = 0; y < 300; ++y) {
        for (int x = 0; x < 500; ++x)
            image.at(x, y) = 0xff000000 | static_cast<std::uint32_t>(x * 7919 + y * 104729) % 0x1000000;
    }
    EXPECT_EQ(decode(encodePng(image)).pixels(), image.pixels());
}

TEST(ImageJpeg, ColoursComeOut) {
    const AImage image = decodeImage(kRedAndBlue);
    ASSERT_EQ(image.width(), 16);
    ASSERT_EQ(image.height(), 8);
    for (int x : {0, 3, 7}) {
        EXPECT_NEAR(redOf(image.at(x, 4)), 255, 6);
        EXPECT_NEAR(blueOf(image.at(x, 4)), 0, 6);
        EXPECT_NEAR(blueOf(image.at(x + 8, 4)), 255, 6);
        EXPECT_EQ(alphaOf(image.at(x, 4)), 255);
    }
}

TEST(ImageJpeg, GraysComeOut) {
    const AImage image = decodeImage(kBlackAndGray);
    ASSERT_EQ(image.width(), 16);
    EXPECT_NEAR(redOf(image.at(2, 2)), 0, 3);
    EXPECT_NEAR(redOf(image.at(12, 2)), 200, 3);
    EXPECT_EQ(redOf(image.at(12, 2)), blueOf(image.at(12, 2)));
    EXPECT_EQ(alphaOf(image.at(12, 2)), 255);
}

TEST(ImageJpeg, SeveralPassesComeOut) {
    const AImage image = decodeImage(kProgressive);
    ASSERT_EQ(image.width(), 16);
    EXPECT_NEAR(redOf(image.at(2, 2)), 255, 6);
    EXPECT_NEAR(blueOf(image.at(12, 2)), 255, 6);
}

TEST(ImageBytes, OfAnythingElseAreNoImage) {
    EXPECT_TRUE(decode("").empty());
    EXPECT_TRUE(decode("A").empty());
    EXPECT_TRUE(decode("GIF89a\x01\x01").empty());
    EXPECT_TRUE(decode("<svg/>").empty());
    EXPECT_TRUE(decode("\x89PNG\r\n\x1a\n").empty());
    EXPECT_TRUE(decode("\xff\xd8\xff").empty());
}

TEST(ImageBytes, CutAnywhereAreHarmless) {
    for (const std::string& whole :
         {encodePng(imageOf("r.b.k\n.w.g.\n")), bytesOf(kRedAndBlue), bytesOf(kProgressive)}) {
        for (std::size_t length = 0; length < whole.size(); ++length) {
            // On the heap at its exact size, so that reading beyond is noticed.
            const std::vector<unsigned char> cut(whole.begin(),
                                                 whole.begin() + static_cast<std::ptrdiff_t>(length));
            const AImage image = decodeImage(cut);
            expectHarmless(image);
            EXPECT_TRUE(image.empty() || length >= whole.size() / 2) << length;
        }
    }
}

TEST(ImageBytes, DamagedAnywhereAreHarmless) {
    std::mt19937 random(20);
    for (const std::string& whole : {encodePng(imageOf("r.b.k\n.w.g.\n")), bytesOf(kRedAndBlue),
                                     bytesOf(kBlackAndGray), bytesOf(kProgressive), bytesOf(kInvertedInks)}) {
        for (int round = 0; round < 400; ++round) {
            std::string damaged = whole;
            for (unsigned i = 0; i <= random() % 4; ++i)
                damaged[random() % damaged.size()] = static_cast<char>(random());
            expectHarmless(decode(damaged));
        }
    }
}

// Image files of every kind, damaged ones among them.
#include <gtest/gtest.h>
#include <zlib.h>

#include <span>
#include <utility>
#include <vector>

#include "support/canvas_picture.h"
#include "support/small_images.h"
#include "support/small_jpegs.h"

using namespace test;

namespace {

std::string number(std::uint32_t value) {
    std::string bytes;
    for (int shift : {24, 16, 8, 0}) bytes += static_cast<char>(value >> shift);
    return bytes;
}

std::string chunk(const std::string& kind, const std::string& data) {
    const std::string summed = kind + data;
    const uLong sum =
        crc32(0, reinterpret_cast<const Bytef*>(summed.data()), static_cast<uInt>(summed.size()));
    return number(static_cast<std::uint32_t>(data.size())) + summed + number(static_cast<std::uint32_t>(sum));
}

std::string packed(const std::string& rows) {
    uLongf size = compressBound(rows.size());
    std::string bytes(size, '\0');
    compress(reinterpret_cast<Bytef*>(bytes.data()), &size, reinterpret_cast<const Bytef*>(rows.data()),
             rows.size());
    bytes.resize(size);
    return bytes;
}

// A PNG file of a colour type and a depth; every row starts with its filter.
std::string png(std::uint32_t width, std::uint32_t height, int type, int depth, const std::string& rows,
                const std::string& more = "") {
    const std::string header = number(width) + number(height) + static_cast<char>(depth) +
                               static_cast<char>(type) + std::string(3, '\0');
    return "\x89PNG\r\n\x1a\n" + chunk("IHDR", header) + more + chunk("IDAT", packed(rows)) +
           chunk("IEND", "");
}

AImage decode(const std::string& bytes) {
    return decodeImage({reinterpret_cast<const unsigned char*>(bytes.data()), bytes.size()});
}

}  // namespace

TEST(ImageFiles, ReadsEveryColourTypeOfPng) {
    using namespace std::string_literals;
    EXPECT_EQ(rowsOf(decode(png(3, 1, 0, 8, "\0\0\xff\x80"s))), "kw?\n");
    EXPECT_EQ(rowsOf(decode(png(8, 1, 0, 1, "\0\xa5"s))), "wkwkkwkw\n");
    EXPECT_EQ(rowsOf(decode(png(2, 1, 0, 16, "\0\xff\xff\0\0"s))), "wk\n");
    EXPECT_EQ(rowsOf(decode(png(2, 1, 2, 8, "\0\xff\0\0\0\0\xff"s))), "rb\n");
    EXPECT_EQ(rowsOf(decode(png(1, 1, 2, 16, "\0\0\0\xff\xff\0\0"s))), "g\n");
    const std::string palette = chunk("PLTE", "\xff\0\0\0\xff\0\0\0\xff"s);
    EXPECT_EQ(rowsOf(decode(png(4, 1, 3, 2, "\0\x1b"s.replace(1, 1, "\x18"), palette))), "rgbr\n");
    EXPECT_EQ(rowsOf(decode(png(3, 1, 3, 8, "\0\2\1\0"s, palette + chunk("tRNS", "\xff\0"s)))), "b.r\n");
    EXPECT_EQ(rowsOf(decode(png(2, 1, 4, 8, "\0\xff\xff\xff\0"s))), "w.\n");
    EXPECT_EQ(rowsOf(decode(png(2, 1, 6, 8, "\0\0\xff\0\xff\xff\0\0\0"s))), "g.\n");
    EXPECT_EQ(rowsOf(decode(png(2, 1, 2, 8, "\0\xff\0\0\0\0\xff"s, chunk("tRNS", "\0\xff\0\0\0\0"s)))),
              ".b\n");
}

TEST(ImageFiles, MultipliesByAlpha) {
    using namespace std::string_literals;
    EXPECT_EQ(decode(png(1, 1, 6, 8, "\0\xff\x80\0\x80"s)).at(0, 0), 0x80804000U);
}

TEST(ImageFiles, ReadsInks) {
    for (const AImage& image : {decodeImage(kInks), decodeImage(kInvertedInks)}) {
        ASSERT_EQ(image.width(), 16);
        EXPECT_NEAR(redOf(image.at(2, 2)), 255, 6);
        EXPECT_NEAR(greenOf(image.at(2, 2)), 0, 6);
        EXPECT_NEAR(redOf(image.at(12, 2)), 0, 6);
        EXPECT_NEAR(blueOf(image.at(12, 2)), 127, 6);
    }
}

TEST(ImageFiles, ReadsGifs) {
    EXPECT_EQ(rowsOf(decodeImage(kGifColors)), "rgb.\n..rr\n");
    EXPECT_EQ(rowsOf(decodeImage(kGifInterlaced)), "r\ng\nw\nb\nb\nw\nr\nr\ng\n");
    EXPECT_EQ(rowsOf(decodeImage(kGifLocalColors)), "wb\n");
    // Of several pictures the first, at its place.
    EXPECT_EQ(rowsOf(decodeImage(kGifPlaced)), "....\n.rg.\n.bw.\n");
}

TEST(ImageFiles, AGifIsAsLargeAsItsPicture) {
    std::string gif(std::begin(kGifPlaced), std::end(kGifPlaced));
    gif.replace(6, 4, std::string("\1\0\1\0", 4));
    EXPECT_EQ(rowsOf(decode(gif)), "...\n.rg\n.bw\n");
}

TEST(ImageFiles, ReadsWebps) {
    const AImage exact = decodeImage(kWebpColors);
    EXPECT_EQ(rowsOf(exact), "rgb.\nw?kb\n");
    EXPECT_EQ(exact.at(1, 1), 0x80800000U);
    const AImage lossy = decodeImage(kWebpLossyAlpha);
    ASSERT_EQ(lossy.height(), 16);
    EXPECT_NEAR(redOf(lossy.at(8, 2)), 255, 4);
    EXPECT_EQ(alphaOf(lossy.at(8, 13)), 128);
    EXPECT_NEAR(blueOf(lossy.at(8, 13)), 128, 4);
    EXPECT_NEAR(blueOf(decodeImage(kWebpLossy).at(8, 13)), 255, 4);
    // Of an animation the first picture, at its place.
    EXPECT_EQ(rowsOf(decodeImage(kWebpAnimation)), "....\n..rg\n..bw\n....\n");
}

// Cut off anywhere, and with any byte changed, there is an image or none, and no more memory than the size allows.
TEST(ImageFiles, BrokenGifsAndWebpsAreNoneOrAnImage) {
    for (const std::span<const unsigned char> whole :
         {std::span<const unsigned char>(kGifColors), std::span<const unsigned char>(kGifInterlaced),
          std::span<const unsigned char>(kWebpColors), std::span<const unsigned char>(kWebpLossyAlpha),
          std::span<const unsigned char>(kWebpAnimation)}) {
        for (std::size_t size = 0; size + 24 < whole.size(); ++size)
            EXPECT_TRUE(decodeImage(whole.subspan(0, size)).empty()) << size;
        std::vector<unsigned char> bytes(whole.begin(), whole.end());
        for (unsigned char& changed : bytes) {
            for (const int other : {0, 1, 127, 255}) {
                const auto before = std::exchange(changed, static_cast<unsigned char>(other));
                EXPECT_LE(decodeImage(bytes).pixels().size(), std::size_t{6} << 20);
                changed = before;
            }
        }
    }
}

TEST(ImageFiles, AFewBytesDoNotTakeGigabytes) {
    using namespace std::string_literals;
    EXPECT_TRUE(decode(png(1 << 14, 1 << 14, 6, 8, "\0\0\0\0\0"s)).empty());
    EXPECT_TRUE(decode(png(1 << 16, 1 << 16, 0, 1, "\0\0\0\0\0"s)).empty());
    std::string wide(std::begin(kBlackAndGray), std::end(kBlackAndGray));
    const std::size_t sizes = wide.find("\xff\xc0") + 5;
    wide.replace(sizes, 4, "\xff\x00\xff\x00"s);
    EXPECT_TRUE(decode(wide).empty());
    std::string gif(std::begin(kGifColors), std::end(kGifColors));
    EXPECT_TRUE(decode(gif.replace(6, 4, "\xff\xff\xff\xff")).empty());
    // The sides of a lossless picture are 14 bits each, less one.
    std::string webp(std::begin(kWebpColors), std::end(kWebpColors));
    EXPECT_TRUE(decode(webp.replace(webp.find("VP8L") + 9, 3, "\xff\xff\xff")).empty());
}

TEST(ImageFiles, AnImageThatEndsEarlyIsNone) {
    const std::string whole = encodePng(imageOf("r.b.k\n.w.g.\n"));
    // The last chunk is 12 bytes, and 4 before it are a checksum.
    EXPECT_TRUE(decode(whole.substr(0, whole.size() - 24)).empty());
    const std::string passes(std::begin(kProgressive), std::end(kProgressive));
    EXPECT_TRUE(decode(passes.substr(0, passes.size() - 10)).empty());
}

TEST(ImageFiles, SaysNothingOfItsOwn) {
    using namespace std::string_literals;
    testing::internal::CaptureStderr();
    decode("\x89PNG\r\n\x1a\nabcdefghijklmnop");
    decode(png(1, 1, 6, 8, "\0\xff\x80\0\x80"s, chunk("gAMA", "abc") + chunk("iCCP", "abc")));
    decode(std::string(std::begin(kRedAndBlue), std::begin(kRedAndBlue) + 200));
    decode("\xff\xd8\xff\xdb and so on and so forth");
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "");
}

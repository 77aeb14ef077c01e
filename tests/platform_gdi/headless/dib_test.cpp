// Damaged pictures: the reader must refuse them without a look outside the bytes, which stand in blocks of
// their very size so that the sanitizers see one.
#include "platform/headless/gdi/dib.h"

#include <gtest/gtest.h>

#include <cstring>

#include "tests/platform_gdi/res/resource.h"
#include "tests/support/pixels.h"

using namespace headless;

namespace {

std::vector<std::byte> resource(int id) {
    HRSRC found = FindResourceW(nullptr, MAKEINTRESOURCEW(id), RT_BITMAP);
    auto* bytes = static_cast<const std::byte*>(LockResource(LoadResource(nullptr, found)));
    return {bytes, bytes + SizeofResource(nullptr, found)};
}

// Copies into a block of exactly that size.
bool readable(std::span<const std::byte> bytes) {
    auto block = std::make_unique<std::byte[]>(bytes.size());
    std::copy(bytes.begin(), bytes.end(), block.get());
    auto dib = readDib({block.get(), bytes.size()});
    return dib && bitmapOf(*dib) != nullptr;
}

BITMAPINFOHEADER headerOf(const std::vector<std::byte>& bytes) {
    BITMAPINFOHEADER header;
    std::memcpy(&header, bytes.data(), sizeof header);
    return header;
}

}  // namespace

TEST(DamagedBitmap, EveryTruncationIsRefused) {
    for (int id = IDB_1_BIT; id <= IDB_32_BITS; ++id) {
        std::vector<std::byte> bytes = resource(id);
        ASSERT_TRUE(readable(bytes)) << id;
        for (std::size_t size = 0; size < bytes.size(); ++size) {
            EXPECT_FALSE(readable(std::span(bytes).first(size))) << id << " cut to " << size;
        }
    }
}

TEST(DamagedBitmap, UnreasonableHeadersAreRefused) {
    using Header = BITMAPINFOHEADER;
    struct Case {
        const char* what;
        void (*damage)(Header&);
    };
    const Case cases[] = {
        {"header too small", [](Header& h) { h.biSize = 39; }},
        {"header of an older kind", [](Header& h) { h.biSize = 12; }},
        {"header beyond the end", [](Header& h) { h.biSize = 0xffffffff; }},
        {"no width", [](Header& h) { h.biWidth = 0; }},
        {"negative width", [](Header& h) { h.biWidth = -3; }},
        {"enormous width", [](Header& h) { h.biWidth = 0x7fffffff; }},
        {"no height", [](Header& h) { h.biHeight = 0; }},
        {"enormous height", [](Header& h) { h.biHeight = 0x7fffffff; }},
        {"height without an opposite", [](Header& h) { h.biHeight = std::numeric_limits<LONG>::min(); }},
        {"two planes", [](Header& h) { h.biPlanes = 2; }},
        {"two bits", [](Header& h) { h.biBitCount = 2; }},
        {"no bits", [](Header& h) { h.biBitCount = 0; }},
        {"compressed", [](Header& h) { h.biCompression = 2; }},
        {"more colours than numbers", [](Header& h) { h.biClrUsed = 17; }},
        {"enormous colour table", [](Header& h) { h.biClrUsed = 0xffffffff; }},
    };
    std::vector<std::byte> whole = resource(IDB_4_BITS);
    for (const Case& one : cases) {
        std::vector<std::byte> bytes = whole;
        Header header = headerOf(bytes);
        one.damage(header);
        std::memcpy(bytes.data(), &header, sizeof header);
        EXPECT_FALSE(readable(bytes)) << one.what;
    }
}

TEST(DamagedBitmap, EveryByteMayBeAnything) {
    std::vector<std::byte> whole = resource(IDB_4_BITS);
    int read = 0;
    for (std::size_t at = 0; at < whole.size(); ++at) {
        for (int value = 0; value < 256; ++value) {
            std::vector<std::byte> bytes = whole;
            bytes[at] = static_cast<std::byte>(value);
            read += readable(bytes);
        }
    }
    EXPECT_GT(read, 0);
}

TEST(DamagedBitmap, AColourThatTheTableLacksIsBlack) {
    std::vector<std::byte> bytes = resource(IDB_4_BITS);
    bytes.back() = bytes[bytes.size() - 2] = std::byte{0};
    bytes[bytes.size() - 3] = bytes[bytes.size() - 4] = std::byte{0xff};
    auto dib = readDib(bytes);
    ASSERT_TRUE(dib);
    auto bitmap = bitmapOf(*dib);
    ASSERT_NE(bitmap, nullptr);
    EXPECT_EQ(bitmap->row(0)[0], 0u);
    EXPECT_EQ(bitmap->row(0)[2], 0u);
}

TEST(DamagedBitmap, ATopDownPictureIsTurned) {
    std::vector<std::byte> bytes = resource(IDB_8_BITS);
    BITMAPINFOHEADER header = headerOf(bytes);
    header.biHeight = -2;
    std::memcpy(bytes.data(), &header, sizeof header);
    auto dib = readDib(bytes);
    ASSERT_TRUE(dib);
    auto bitmap = bitmapOf(*dib);
    ASSERT_NE(bitmap, nullptr);
    EXPECT_EQ(bitmap->row(0)[0], 0u);
    EXPECT_EQ(bitmap->row(1)[0], 0xffffffu);
}

TEST(DamagedBitmap, IsNotLoadedAsAMappedOne) {
    COLORMAP map{test::kWhite, test::kRed};
    EXPECT_EQ(CreateMappedBitmap(nullptr, IDB_TRUNCATED, 0, &map, 1), nullptr);
    EXPECT_EQ(CreateMappedBitmap(nullptr, IDB_COMPRESSED, 0, &map, 1), nullptr);
    HBITMAP whole = CreateMappedBitmap(nullptr, IDB_4_BITS, 0, &map, 1);
    EXPECT_NE(whole, nullptr);
    DeleteObject(whole);
}

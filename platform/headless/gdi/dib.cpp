#include "platform/headless/gdi/dib.h"

#include <cstring>
#include <limits>

namespace headless {

namespace {

unsigned byteAt(std::span<const std::byte> bytes, std::size_t index) {
    return std::to_integer<unsigned>(bytes[index]);
}

Pixel littleEndian(std::span<const std::byte> bytes, std::size_t offset, std::size_t count) {
    Pixel value = 0;
    for (std::size_t i = 0; i < count; ++i) value |= byteAt(bytes, offset + i) << 8 * i;
    return value;
}

// Five bits of a colour, spread over eight.
Pixel widen(Pixel five) {
    return five << 3 | five >> 2;
}

Pixel pixelAt(const Dib& dib, std::span<const std::byte> row, std::size_t x) {
    auto colorNumber = [&](unsigned bits) {
        std::size_t bit = x * bits;
        unsigned number = byteAt(row, bit / 8) >> (8 - bits - bit % 8) & ((1u << bits) - 1);
        return number < dib.palette.size() ? dib.palette[number] : 0;
    };
    switch (dib.bits) {
        case 16: {
            Pixel value = littleEndian(row, x * 2, 2);
            return widen(value >> 10 & 31) << 16 | widen(value >> 5 & 31) << 8 | widen(value & 31);
        }
        case 24:
            return littleEndian(row, x * 3, 3);
        case 32:
            return littleEndian(row, x * 4, 4) & 0xffffff;
        default:
            return colorNumber(static_cast<unsigned>(dib.bits));
    }
}

bool readable(const BITMAPINFOHEADER& header) {
    static constexpr int kDepths[] = {1, 4, 8, 16, 24, 32};
    bool depth = false;
    for (int bits : kDepths) depth = depth || header.biBitCount == bits;
    return depth && header.biSize >= sizeof(BITMAPINFOHEADER) && header.biPlanes == 1 &&
           header.biCompression == BI_RGB && header.biWidth > 0 && header.biHeight != 0 &&
           header.biHeight != std::numeric_limits<LONG>::min();
}

std::size_t rowSize(const Dib& dib) {
    return (static_cast<std::size_t>(dib.width) * static_cast<std::size_t>(dib.bits) + 31) / 32 * 4;
}

}  // namespace

std::optional<Dib> readDib(std::span<const std::byte> bytes) {
    BITMAPINFOHEADER header;
    if (bytes.size() < sizeof header) return std::nullopt;
    std::memcpy(&header, bytes.data(), sizeof header);
    if (!readable(header) || header.biSize > bytes.size()) return std::nullopt;
    bytes = bytes.subspan(header.biSize);

    Dib dib;
    dib.width = header.biWidth;
    dib.height = header.biHeight < 0 ? -header.biHeight : header.biHeight;
    dib.topDown = header.biHeight < 0;
    dib.bits = header.biBitCount;

    // A deep picture may carry colours too, for displays that have few: they are skipped.
    std::size_t most = dib.bits <= 8 ? std::size_t{1} << dib.bits : 0;
    std::size_t colors = header.biClrUsed != 0 ? header.biClrUsed : most;
    if (colors > bytes.size() / sizeof(RGBQUAD) || (most != 0 && colors > most)) return std::nullopt;
    if (most != 0) {
        for (std::size_t i = 0; i < colors; ++i)
            dib.palette.push_back(littleEndian(bytes, i * sizeof(RGBQUAD), 3));
    }
    bytes = bytes.subspan(colors * sizeof(RGBQUAD));

    if (bytes.size() / rowSize(dib) < static_cast<std::size_t>(dib.height)) return std::nullopt;
    dib.rows = bytes.first(rowSize(dib) * static_cast<std::size_t>(dib.height));
    return dib;
}

std::unique_ptr<Bitmap> bitmapOf(const Dib& dib) {
    auto bitmap = Bitmap::create(dib.width, dib.height, 32);
    for (int y = 0; bitmap && y < dib.height; ++y) {
        auto scan = static_cast<std::size_t>(dib.topDown ? y : dib.height - 1 - y);
        auto row = dib.rows.subspan(scan * rowSize(dib), rowSize(dib));
        for (int x = 0; x < dib.width; ++x)
            bitmap->row(y)[x] = pixelAt(dib, row, static_cast<std::size_t>(x));
    }
    return bitmap;
}

}  // namespace headless

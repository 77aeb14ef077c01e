// Device-independent bitmaps, as bitmap resources hold them: a header, a colour table, rows from
// the bottom up.
#pragma once

#include <cstddef>
#include <memory>
#include <optional>
#include <span>
#include <vector>

#include "platform/headless/gdi/objects.h"

namespace headless {

struct Dib {
    int width = 0;
    int height = 0;
    int bits = 0;  // 1, 4, 8, 16, 24 or 32 a pixel
    bool topDown = false;
    std::vector<Pixel> palette;       // may hold fewer entries than the bits can number
    std::span<const std::byte> rows;  // each padded to whole double words
};

// Nothing unless the bytes hold a whole uncompressed picture. The answer's rows point into the bytes.
std::optional<Dib> readDib(std::span<const std::byte> bytes);

// A bitmap of the display with the picture. A pixel whose number the palette lacks is black.
// Null without memory.
std::unique_ptr<Bitmap> bitmapOf(const Dib& dib);

}  // namespace headless

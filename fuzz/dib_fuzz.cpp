// Untrusted bitmap resources: a readable one becomes a bitmap; no byte outside is read.
#include <cstdlib>

#include "platform/headless/gdi/dib.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace headless;
    const auto dib = readDib(std::as_bytes(std::span(data, size)));
    if (!dib) return 0;
    const auto* start = reinterpret_cast<const std::byte*>(data);
    if (dib->rows.data() < start || dib->rows.data() + dib->rows.size() > start + size) std::abort();
    const auto bitmap = bitmapOf(*dib);
    if (bitmap && (bitmap->width != dib->width || bitmap->height != dib->height)) std::abort();
    return 0;
}

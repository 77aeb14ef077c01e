// Image files from anybody: whatever the bytes are, an image has the pixels of its size, or there is none.
#include <cstdlib>

#include "canvas/image.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const AImage image = decodeImage({data, size});
    const std::size_t expected =
        static_cast<std::size_t>(image.width()) * static_cast<std::size_t>(image.height());
    if (image.pixels().size() != expected || expected > AImage::kMostPixels) std::abort();
    for (std::uint32_t pixel : image.pixels()) {
        const std::uint32_t alpha = pixel >> 24;
        if ((pixel >> 16 & 0xff) > alpha || (pixel >> 8 & 0xff) > alpha || (pixel & 0xff) > alpha)
            std::abort();
    }
    return 0;
}

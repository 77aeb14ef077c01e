#include "kzcore/display/tiled_picture.h"

#include <algorithm>
#include <atomic>
#include <exception>
#include <mutex>
#include <thread>

#include "kzcore/display/display_drawing.h"

namespace {

constexpr std::uint32_t kWhite = 0xffffffff;

void copyInto(AImage& picture, const AImage& tile, int left, int top) {
    const int width = std::min(tile.width(), picture.width() - left);
    const int height = std::min(tile.height(), picture.height() - top);
    for (int y = 0; y < height; ++y) std::copy(tile.row(y), tile.row(y) + width, picture.row(top + y) + left);
}

}  // namespace

AImage drawTile(const ADisplayList& list, const AShownPaint& shown, const AAffine& toPixels, int side, int x,
                int y, const std::function<bool()>& stops) {
    AImage image(side, side);
    std::fill(image.pixels().begin(), image.pixels().end(), kWhite);
    APixels pixels = pixelsOf(image);
    pixels.hasAlpha = false;
    {
        ACanvas canvas(pixels);
        const AAffine toTile =
            AAffine::translation(-static_cast<double>(side) * x, -static_cast<double>(side) * y) * toPixels;
        if (!ADisplayDrawing(list, shown, toTile).draw(canvas, stops)) return {};
    }
    for (std::uint32_t& pixel : image.pixels()) pixel |= 0xff000000;
    return image;
}

AImage drawTiled(const ADisplayList& list, const AShownPaint& shown, const AAffine& toPixels, int width,
                 int height, int side, unsigned threads) {
    AImage picture(width, height);
    const int columns = (width + side - 1) / side;
    const int rows = (height + side - 1) / side;
    std::atomic<int> next{0};
    std::mutex mutex;
    std::exception_ptr error;
    const auto work = [&] {
        try {
            for (int i = next++; i < columns * rows; i = next++) {
                const AImage tile = drawTile(list, shown, toPixels, side, i % columns, i / columns);
                copyInto(picture, tile, i % columns * side, i / columns * side);
            }
        } catch (...) {
            next = columns * rows;
            const std::lock_guard lock(mutex);
            error = std::current_exception();
        }
    };
    if (threads == 0) threads = std::max(1U, std::thread::hardware_concurrency());
    threads = std::min(threads, static_cast<unsigned>(std::max(1, columns * rows)));
    {
        std::vector<std::jthread> others;
        for (unsigned i = 1; i < threads; ++i) others.emplace_back(work);
        work();
    }
    if (error) std::rethrow_exception(error);
    return picture;
}

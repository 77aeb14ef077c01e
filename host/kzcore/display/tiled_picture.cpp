#include "kzcore/display/tiled_picture.h"

#include <algorithm>
#include <atomic>
#include <exception>
#include <mutex>
#include <system_error>
#include <thread>

#include "kzcore/display/display_drawing.h"

namespace {

constexpr std::uint32_t kOpaque = 0xff000000;

AImage drawPart(const ADisplayList& list, const AShownPaint& shown, const AAffine& toPixels, const RECT& area,
                std::uint32_t ground, const std::function<bool()>& stops) {
    AImage image(static_cast<int>(area.right - area.left), static_cast<int>(area.bottom - area.top));
    std::fill(image.pixels().begin(), image.pixels().end(), ground);
    APixels pixels = pixelsOf(image);
    const bool isOpaque = (ground & kOpaque) == kOpaque;
    pixels.hasAlpha = !isOpaque;
    {
        ACanvas canvas(pixels);
        const AAffine toPart = AAffine::translation(-area.left, -area.top) * toPixels;
        if (!ADisplayDrawing(list, shown, toPart).draw(canvas, stops)) return {};
    }
    if (isOpaque) {
        for (std::uint32_t& pixel : image.pixels()) pixel |= kOpaque;
    }
    return image;
}

// The format walks all of a picture for each square, and only one at a time.
bool isMostlyPictures(const ADisplayList& list) {
    if (list.isOnePicture()) return true;
    std::size_t entries = 0;
    for (std::uint32_t i = 0; i < list.groupCount(); ++i) {
        const ADisplayGroup& group = list.group(i);
        if (group.picture) entries += group.endEntry - group.firstEntry;
    }
    return entries * 2 > list.entryCount();
}

void copyInto(AImage& picture, const AImage& tile, int left, int top) {
    const int width = std::min(tile.width(), picture.width() - left);
    const int height = std::min(tile.height(), picture.height() - top);
    for (int y = 0; y < height; ++y) std::copy(tile.row(y), tile.row(y) + width, picture.row(top + y) + left);
}

}  // namespace

AImage drawTile(const ADisplayList& list, const AShownPaint& shown, const AAffine& toPixels, int side, int x,
                int y, const std::function<bool()>& stops) {
    const RECT square{x * side, y * side, (x + 1) * side, (y + 1) * side};
    return drawPart(list, shown, toPixels, square, kWhiteGround, stops);
}

AImage drawTiled(const ADisplayList& list, const AShownPaint& shown, const AAffine& toPixels, int width,
                 int height, int side, unsigned threads, std::uint32_t ground) {
    if (isMostlyPictures(list)) return drawPart(list, shown, toPixels, {0, 0, width, height}, ground, {});
    AImage picture(width, height);
    const int columns = (width + side - 1) / side;
    const int rows = (height + side - 1) / side;
    std::atomic<int> next{0};
    std::mutex mutex;
    std::exception_ptr error;
    const auto work = [&] {
        try {
            for (int i = next++; i < columns * rows; i = next++) {
                const int left = i % columns * side;
                const int top = i / columns * side;
                const RECT square{left, top, left + side, top + side};
                copyInto(picture, drawPart(list, shown, toPixels, square, ground, {}), left, top);
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
        try {
            for (unsigned i = 1; i < threads; ++i) others.emplace_back(work);
        } catch (const std::system_error&) {
            // As many as there are have to do.
        }
        work();
    }
    if (error) std::rethrow_exception(error);
    return picture;
}

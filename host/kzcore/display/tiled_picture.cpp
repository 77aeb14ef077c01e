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

// Of a drawing with so many entries some squares are drawn in quarters, down to this side, so that all threads have
// something to do until the picture is nearly there.
constexpr std::size_t kManyEntries = 5000;
constexpr int kLeastQuarter = 32;
constexpr std::size_t kMostQuartered = 4;

// What is drawn at a time, in this order: the squares, and then, where `quarters`, the last half of them, of many the
// last four, in quarters. It must not depend on the threads: what is cut elsewhere can be rounded otherwise.
std::vector<RECT> partsOf(int width, int height, int side, bool quarters) {
    std::vector<RECT> parts;
    for (int top = 0; top < height; top += side) {
        for (int left = 0; left < width; left += side) parts.push_back({left, top, left + side, top + side});
    }
    if (!quarters) return parts;
    const std::size_t whole = parts.size() - std::min((parts.size() + 1) / 2, kMostQuartered);
    const std::vector<RECT> last(parts.begin() + static_cast<std::ptrdiff_t>(whole), parts.end());
    parts.resize(whole);
    for (const auto& [left, top, right, bottom] : last) {
        const LONG x = left + side / 2, y = top + side / 2;
        for (const RECT& part : {RECT{left, top, x, y}, RECT{x, top, right, y}, RECT{left, y, x, bottom},
                                 RECT{x, y, right, bottom}}) {
            if (part.left < width && part.top < height) parts.push_back(part);
        }
    }
    return parts;
}

void copyInto(AImage& picture, const AImage& tile, const RECT& area) {
    const auto left = static_cast<int>(area.left), top = static_cast<int>(area.top);
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
    const bool quarters = list.entryCount() >= kManyEntries && side >= 2 * kLeastQuarter;
    const std::vector<RECT> parts = partsOf(width, height, side, quarters);
    AImage picture(width, height);
    std::atomic<std::size_t> next{0};
    std::mutex mutex;
    std::exception_ptr error;
    const auto work = [&] {
        try {
            for (std::size_t i = next++; i < parts.size(); i = next++)
                copyInto(picture, drawPart(list, shown, toPixels, parts[i], ground, {}), parts[i]);
        } catch (...) {
            next = parts.size();
            const std::lock_guard lock(mutex);
            error = std::current_exception();
        }
    };
    if (threads == 0) threads = std::max(1U, std::thread::hardware_concurrency());
    threads = static_cast<unsigned>(std::clamp<std::size_t>(parts.size(), 1, threads));
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

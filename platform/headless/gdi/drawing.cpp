#include <algorithm>
#include <cstring>

#include "platform/headless/gdi/objects.h"

namespace headless {

namespace {

// One axis of a clipped copy: moves the start into the extent and shortens the length.
void clipAxis(std::int64_t& start, std::int64_t& length, std::int64_t& companion, int extent) {
    if (start < 0) {
        length += start;
        companion -= start;
        start = 0;
    }
    length = std::min(length, extent - start);
}

struct Copy {
    std::int64_t x, y, width, height, sourceX, sourceY;
};

bool clipCopy(Copy& copy, const Bitmap& target, const Bitmap& source) {
    clipAxis(copy.x, copy.width, copy.sourceX, target.width);
    clipAxis(copy.y, copy.height, copy.sourceY, target.height);
    clipAxis(copy.sourceX, copy.width, copy.x, source.width);
    clipAxis(copy.sourceY, copy.height, copy.y, source.height);
    return copy.width > 0 && copy.height > 0;
}

// Calls work(target row, source row) for every row of the copy, in an order that lets the areas overlap.
template <class Work>
void eachRow(Bitmap& target, Bitmap& source, const Copy& copy, Work work) {
    bool upwards = &target == &source && copy.y > copy.sourceY;
    auto height = static_cast<int>(copy.height);
    for (int i = 0; i < height; ++i) {
        int y = upwards ? height - 1 - i : i;
        work(target.row(static_cast<int>(copy.y) + y) + copy.x,
             source.row(static_cast<int>(copy.sourceY) + y) + copy.sourceX);
    }
}

// From colours to monochrome, what has the source's background colour becomes white, all else black; the
// other way, white becomes the target's background colour and black its text colour.
void translatePixels(DeviceContext& target, DeviceContext& source, const Copy& copy) {
    bool toMonochrome = target.bitmap->depth == 1;
    Pixel background = pixelOf(toMonochrome ? source.background : target.background);
    Pixel text = pixelOf(target.text);
    eachRow(*target.bitmap, *source.bitmap, copy, [&](Pixel* to, const Pixel* from) {
        std::transform(from, from + copy.width, to, [&](Pixel pixel) -> Pixel {
            if (toMonochrome) return (pixel & 0xffffff) == background ? 0xffffff : 0;
            return pixel != 0 ? background : text;
        });
    });
}

}  // namespace

void copyPixels(Bitmap& target, int x, int y, int width, int height, Bitmap& source, int sourceX,
                int sourceY) {
    Copy copy{x, y, width, height, sourceX, sourceY};
    if (!clipCopy(copy, target, source)) return;
    eachRow(target, source, copy, [&](Pixel* to, const Pixel* from) {
        std::memmove(to, from, static_cast<std::size_t>(copy.width) * sizeof(Pixel));
    });
}

}  // namespace headless

using namespace headless;

BOOL BitBlt(HDC targetHandle, int x, int y, int width, int height, HDC sourceHandle, int sourceX, int sourceY,
            DWORD operation) {
    if (operation != SRCCOPY) return PatBlt(targetHandle, x, y, width, height, operation);
    auto* target = find<DeviceContext>(targetHandle);
    auto* source = find<DeviceContext>(sourceHandle);
    if (target == nullptr || source == nullptr || source->bitmap == nullptr) return FALSE;
    if (target->bitmap == nullptr) return TRUE;
    if ((target->bitmap->depth == 1) == (source->bitmap->depth == 1)) {
        copyPixels(*target->bitmap, x, y, width, height, *source->bitmap, sourceX, sourceY);
        return TRUE;
    }
    Copy copy{x, y, width, height, sourceX, sourceY};
    if (clipCopy(copy, *target->bitmap, *source->bitmap)) translatePixels(*target, *source, copy);
    return TRUE;
}

BOOL PatBlt(HDC handle, int x, int y, int width, int height, DWORD operation) {
    auto* context = find<DeviceContext>(handle);
    if (context == nullptr) return FALSE;
    Pixel pixel = 0;
    switch (operation) {
        case PATCOPY:
            pixel = pixelOf(brushColor(*context->brush));
            break;
        case WHITENESS:
            pixel = 0xffffff;
            break;
        case BLACKNESS:
            break;
        default:
            return fails(ERROR_INVALID_PARAMETER);
    }
    if (context->bitmap == nullptr) return TRUE;
    Bitmap& bitmap = *context->bitmap;
    Copy area{x, y, width, height, x, y};
    if (!clipCopy(area, bitmap, bitmap)) return TRUE;
    pixel = bitmap.nearest(pixel);
    eachRow(bitmap, bitmap, area, [&](Pixel* to, Pixel*) { std::fill_n(to, area.width, pixel); });
    return TRUE;
}

COLORREF GetPixel(HDC handle, int x, int y) {
    auto* context = find<DeviceContext>(handle);
    if (context == nullptr || context->bitmap == nullptr || !context->bitmap->contains(x, y))
        return CLR_INVALID;
    return colorOf(context->bitmap->row(y)[x]);
}

COLORREF SetPixel(HDC handle, int x, int y, COLORREF color) {
    auto* context = find<DeviceContext>(handle);
    if (context == nullptr || context->bitmap == nullptr || !context->bitmap->contains(x, y))
        return CLR_INVALID;
    Pixel pixel = context->bitmap->nearest(pixelOf(color));
    context->bitmap->row(y)[x] = pixel;
    return colorOf(pixel);
}

BOOL GdiFlush() {
    return TRUE;
}

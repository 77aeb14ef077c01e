#include <algorithm>
#include <cstring>
#include <limits>
#include <new>

#include "platform/headless/gdi/objects.h"

namespace headless {

namespace {

// Far above every picture of a screen; keeps a damaged size from taking all memory.
constexpr std::int64_t kMostPixels = std::int64_t{1} << 28;

int rowBytes(const Bitmap& bitmap) {
    std::int64_t bits = std::int64_t{bitmap.width} * bitmap.depth;
    return static_cast<int>((bits + 15) / 16 * 2);
}

}  // namespace

std::unique_ptr<Bitmap> Bitmap::create(int width, int height, WORD depth) {
    if (width <= 0 || height <= 0 || std::int64_t{width} * height > kMostPixels) return nullptr;
    try {
        auto bitmap = std::make_unique<Bitmap>();
        bitmap->width = width;
        bitmap->height = height;
        bitmap->depth = depth;
        bitmap->pixels.resize(static_cast<std::size_t>(width) * static_cast<std::size_t>(height));
        return bitmap;
    } catch (const std::bad_alloc&) {
        return nullptr;
    }
}

Pixel Bitmap::nearest(Pixel color) const {
    if (depth != 1) return color & 0xffffff;
    unsigned brightness = (color >> 16 & 0xff) * 30 + (color >> 8 & 0xff) * 59 + (color & 0xff) * 11;
    return brightness >= 128 * 100 ? 0xffffff : 0;
}

Bitmap& defaultBitmap() {
    static Bitmap& instance = []() -> Bitmap& {
        Bitmap& bitmap = *Bitmap::create(1, 1, 1).release();
        bitmap.permanent = true;
        enterObject(&bitmap);
        return bitmap;
    }();
    return instance;
}

}  // namespace headless

using namespace headless;

HBITMAP CreateCompatibleBitmap(HDC context, int width, int height) {
    auto* model = find<DeviceContext>(context);
    if (model == nullptr) return nullptr;
    if (width == 0 || height == 0) return handleOf<HBITMAP>(&defaultBitmap());
    return handOver<HBITMAP>(
        Bitmap::create(width, height, model->bitmap != nullptr ? model->bitmap->depth : 32));
}

HBITMAP CreateDIBSection(HDC, const BITMAPINFO* info, UINT usage, void** bits, HANDLE section, DWORD) {
    if (bits != nullptr) *bits = nullptr;
    if (info == nullptr || usage != DIB_RGB_COLORS || section != nullptr ||
        info->bmiHeader.biBitCount != 32 || info->bmiHeader.biCompression != BI_RGB ||
        info->bmiHeader.biHeight >= 0 || info->bmiHeader.biHeight == std::numeric_limits<LONG>::min()) {
        return fails(ERROR_INVALID_PARAMETER);
    }
    auto bitmap = Bitmap::create(info->bmiHeader.biWidth, -info->bmiHeader.biHeight, 32);
    if (bitmap) {
        bitmap->section = true;
        if (bits != nullptr) *bits = bitmap->pixels.data();
    }
    return guarded([&] { return handOver<HBITMAP>(std::move(bitmap)); });
}

int GetObjectW(HGDIOBJ handle, int size, LPVOID buffer) {
    auto answer = [&](const auto& value) {
        constexpr int needed = sizeof value;
        if (buffer == nullptr) return needed;
        if (size < needed) return 0;
        std::memcpy(buffer, &value, sizeof value);
        return needed;
    };
    GdiObject* object = findObject(handle);
    if (object == nullptr) return 0;
    if (object->kind == GdiKind::bitmap) {
        auto& bitmap = static_cast<Bitmap&>(*object);
        return answer(BITMAP{0, bitmap.width, bitmap.height, rowBytes(bitmap), 1, bitmap.depth,
                             bitmap.section ? bitmap.pixels.data() : nullptr});
    }
    if (object->kind == GdiKind::brush) {
        return answer(LOGBRUSH{BS_SOLID, brushColor(static_cast<Brush&>(*object)), 0});
    }
    if (object->kind == GdiKind::font) return answer(static_cast<Font&>(*object).description);
    return 0;
}

int GetDIBits(HDC context, HBITMAP handle, UINT first, UINT rows, LPVOID bits, BITMAPINFO* info, UINT usage) {
    auto* bitmap = find<Bitmap>(handle);
    if (find<DeviceContext>(context) == nullptr || bitmap == nullptr) return 0;
    if (info == nullptr || bits == nullptr || usage != DIB_RGB_COLORS || bitmap->selections > 0) return 0;
    const BITMAPINFOHEADER& header = info->bmiHeader;
    if (header.biBitCount != 32 || header.biCompression != BI_RGB || header.biWidth != bitmap->width)
        return 0;
    auto height = static_cast<UINT>(bitmap->height);
    if (header.biHeight == 0 || first >= height) return 0;
    UINT count = std::min(rows, height - first);
    auto* target = static_cast<Pixel*>(bits);
    bool topDown = header.biHeight < 0;
    for (UINT i = 0; i < count; ++i) {
        UINT scan = first + i;
        const Pixel* row = bitmap->row(static_cast<int>(topDown ? scan : height - 1 - scan));
        for (int x = 0; x < bitmap->width; ++x) *target++ = row[x] & 0xffffff;
    }
    return static_cast<int>(count);
}

#include <algorithm>

#include "platform/headless/gdi/dib.h"

using namespace headless;

namespace {

Pixel mapped(Pixel color, std::span<const COLORMAP> map) {
    auto row = std::find_if(map.begin(), map.end(),
                            [&](const COLORMAP& entry) { return pixelOf(entry.from) == color; });
    return row == map.end() ? color : pixelOf(row->to);
}

}  // namespace

HBITMAP CreateMappedBitmap(HINSTANCE module, INT_PTR id, UINT flags, LPCOLORMAP map, int count) {
    if (flags != 0 || count < 0 || (count > 0 && map == nullptr)) {
        return fails(ERROR_INVALID_PARAMETER);
    }
    HRSRC resource = FindResourceW(module, MAKEINTRESOURCEW(id), RT_BITMAP);
    if (resource == nullptr) return nullptr;
    auto* bytes = static_cast<const std::byte*>(LockResource(LoadResource(module, resource)));
    if (bytes == nullptr) return nullptr;
    return guarded([&]() -> HBITMAP {
        auto dib = readDib({bytes, SizeofResource(module, resource)});
        if (!dib) return fails(ERROR_INVALID_PARAMETER);
        for (Pixel& color : dib->palette) color = mapped(color, {map, static_cast<std::size_t>(count)});
        return handOver<HBITMAP>(bitmapOf(*dib));
    });
}

// What stands behind the handles of device contexts, bitmaps, brushes and image lists.
//
// A handle is the object's address. The table of live objects, against which every call checks its handles,
// keeps the addresses inverted: a leak checker must not take the table for an owner.
#pragma once

#include <cstdint>
#include <memory>
#include <vector>

#include "platform/headless/guard.h"
#include "platform/headless/include/winapi/image_list.h"

namespace headless {

enum class GdiKind { deviceContext, bitmap, brush, font, imageList };

struct GdiObject {
    explicit GdiObject(GdiKind objectKind) : kind(objectKind) {}
    GdiObject(const GdiObject&) = delete;
    GdiObject& operator=(const GdiObject&) = delete;
    virtual ~GdiObject() = default;

    const GdiKind kind;
    bool permanent = false;  // a stock or system object: deleting it does nothing
    int selections = 0;      // into how many contexts it is selected
};

// 0x00RRGGBB; the high byte is whatever a drawing library left there.
using Pixel = std::uint32_t;

constexpr Pixel pixelOf(COLORREF color) {
    return (color & 0xff) << 16 | (color & 0xff00) | (color >> 16 & 0xff);
}

constexpr COLORREF colorOf(Pixel pixel) {
    return (pixel & 0xff) << 16 | (pixel & 0xff00) | (pixel >> 16 & 0xff);
}

struct Bitmap : GdiObject {
    static constexpr GdiKind kKind = GdiKind::bitmap;

    Bitmap() : GdiObject(kKind) {}
    // Black. Null when the size is empty or there is no memory for it.
    static std::unique_ptr<Bitmap> create(int width, int height, WORD depth);

    bool contains(int x, int y) const { return x >= 0 && x < width && y >= 0 && y < height; }
    Pixel* row(int y) {
        return pixels.data() + static_cast<std::size_t>(y) * static_cast<std::size_t>(width);
    }
    // The colour that a pixel of this bitmap takes: monochrome ones know the nearer of black and white.
    Pixel nearest(Pixel color) const;

    int width = 0;
    int height = 0;
    WORD depth = 32;           // 32 or 1, of image lists also 24; all keep 32-bit pixels
    bool section = false;      // its bits are known outside
    bool ownedByList = false;  // an image list's
    std::vector<Pixel> pixels;
};

struct Brush : GdiObject {
    static constexpr GdiKind kKind = GdiKind::brush;

    explicit Brush(COLORREF brushColor) : GdiObject(kKind), color(brushColor) {}

    COLORREF color;
    int systemColor = -1;  // follows this system colour when not negative
};

struct Font : GdiObject {
    static constexpr GdiKind kKind = GdiKind::font;

    explicit Font(const LOGFONTW& fontDescription) : GdiObject(kKind), description(fontDescription) {}

    LOGFONTW description;
};

struct DeviceContext : GdiObject {
    static constexpr GdiKind kKind = GdiKind::deviceContext;

    // Null: a display's context, without a bitmap.
    explicit DeviceContext(Bitmap* selectedBitmap);
    ~DeviceContext() override;

    Bitmap* bitmap;
    Brush* brush;
    HWND window = nullptr;
    bool borrowed = false;  // from GetDC
    COLORREF background = RGB(255, 255, 255);
    COLORREF text = RGB(0, 0, 0);
};

// --- the table of live objects ---

void enterObject(const GdiObject* object);
// Takes the object out of the table and deletes it.
void destroyObject(GdiObject* object);

// The object behind a handle, null unless it lives. The last error then says so.
GdiObject* findObject(const void* handle);

template <class T>
T* find(const void* handle) {
    GdiObject* object = findObject(handle);
    if (object != nullptr && object->kind != T::kKind) SetLastError(ERROR_INVALID_HANDLE);
    return object != nullptr && object->kind == T::kKind ? static_cast<T*>(object) : nullptr;
}

// Handles are addresses of the GdiObject part.
template <class Handle>
Handle handleOf(GdiObject* object) {
    return reinterpret_cast<Handle>(object);
}

// Hands an object over to the holder of its handle. A null object stays null, with a last error.
template <class Handle, class T>
Handle handOver(std::unique_ptr<T> object) {
    if (!object) return fails(ERROR_NOT_ENOUGH_MEMORY);
    enterObject(object.get());
    return handleOf<Handle>(object.release());
}

Bitmap& defaultBitmap();
Brush& stockBrush(int index);  // index: WHITE_BRUSH to BLACK_BRUSH
COLORREF brushColor(const Brush& brush);

// Copies pixels as they are, between bitmaps of one depth, overlapping or not. Cut at all edges.
void copyPixels(Bitmap& target, int x, int y, int width, int height, Bitmap& source, int sourceX,
                int sourceY);

}  // namespace headless

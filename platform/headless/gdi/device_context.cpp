#include <algorithm>
#include <string_view>
#include <utility>

#include "platform/headless/gdi/objects.h"

namespace headless {

DeviceContext::DeviceContext(Bitmap* selectedBitmap)
    : GdiObject(kKind), bitmap(selectedBitmap), brush(&stockBrush(WHITE_BRUSH)) {
    if (bitmap != nullptr) ++bitmap->selections;
    ++brush->selections;
}

DeviceContext::~DeviceContext() {
    if (bitmap != nullptr) --bitmap->selections;
    --brush->selections;
}

namespace {

bool isDisplay(std::u16string_view driver) {
    constexpr std::u16string_view kDisplay = u"DISPLAY";
    auto same = [](char16_t a, char16_t b) { return (a >= u'a' && a <= u'z' ? a - u'a' + u'A' : a) == b; };
    return std::equal(driver.begin(), driver.end(), kDisplay.begin(), kDisplay.end(), same);
}

HDC openContext(Bitmap* bitmap) {
    return guarded([&] { return handOver<HDC>(std::make_unique<DeviceContext>(bitmap)); });
}

template <class T>
HGDIOBJ exchange(T*& slot, T* object) {
    T* before = slot;
    --before->selections;
    ++object->selections;
    slot = object;
    return handleOf<HGDIOBJ>(before);
}

COLORREF exchangeColor(HDC handle, COLORREF DeviceContext::*color, COLORREF value) {
    auto* context = find<DeviceContext>(handle);
    return context == nullptr ? CLR_INVALID : std::exchange(context->*color, value & 0xffffff);
}

}  // namespace

}  // namespace headless

using namespace headless;

HDC CreateDCW(LPCWSTR driver, LPCWSTR, LPCWSTR, const DEVMODEW*) {
    if (driver == nullptr || !isDisplay(driver)) {
        return fails(ERROR_INVALID_PARAMETER);
    }
    return openContext(nullptr);
}

HDC CreateCompatibleDC(HDC model) {
    if (model != nullptr && find<DeviceContext>(model) == nullptr) return nullptr;
    return openContext(&defaultBitmap());
}

BOOL DeleteDC(HDC handle) {
    auto* context = find<DeviceContext>(handle);
    if (context == nullptr || context->borrowed) return FALSE;
    destroyObject(context);
    return TRUE;
}

HDC GetDC(HWND window) {
    HDC handle = openContext(nullptr);
    if (auto* context = find<DeviceContext>(handle)) {
        context->window = window;
        context->borrowed = true;
    }
    return handle;
}

int ReleaseDC(HWND window, HDC handle) {
    auto* context = find<DeviceContext>(handle);
    if (context == nullptr || !context->borrowed || context->window != window) return 0;
    destroyObject(context);
    return 1;
}

HGDIOBJ SelectObject(HDC handle, HGDIOBJ objectHandle) {
    auto* context = find<DeviceContext>(handle);
    GdiObject* object = findObject(objectHandle);
    if (context == nullptr || object == nullptr) return nullptr;
    if (object->kind == GdiKind::brush) return exchange(context->brush, static_cast<Brush*>(object));
    if (object->kind != GdiKind::bitmap || context->bitmap == nullptr) return nullptr;
    auto* bitmap = static_cast<Bitmap*>(object);
    // Two contexts must not draw on one bitmap; only the bitmap that stands for "none" is shared.
    bool elsewhere = bitmap->selections > 0 && bitmap != context->bitmap && bitmap != &defaultBitmap();
    return elsewhere ? nullptr : exchange(context->bitmap, bitmap);
}

COLORREF SetBkColor(HDC context, COLORREF color) {
    return exchangeColor(context, &DeviceContext::background, color);
}

COLORREF SetTextColor(HDC context, COLORREF color) {
    return exchangeColor(context, &DeviceContext::text, color);
}

COLORREF GetBkColor(HDC handle) {
    auto* context = find<DeviceContext>(handle);
    return context == nullptr ? CLR_INVALID : context->background;
}

COLORREF GetTextColor(HDC handle) {
    auto* context = find<DeviceContext>(handle);
    return context == nullptr ? CLR_INVALID : context->text;
}

int GetClipBox(HDC handle, RECT* box) {
    auto* context = find<DeviceContext>(handle);
    if (context == nullptr || box == nullptr) return ERROR;
    *box = RECT{};
    if (context->bitmap == nullptr) return NULLREGION;
    box->right = context->bitmap->width;
    box->bottom = context->bitmap->height;
    return SIMPLEREGION;
}

#include "app/window/windows/screen.h"

#include <cstring>

namespace app::window {

namespace {

std::unique_ptr<CGdiObject> makeFont(const LOGFONTW& description) {
    auto font = std::make_unique<CGdiObject>();
    font->Attach(CreateFontIndirectW(&description));
    return font;
}

}  // namespace

// Windows knows of screens that differ since its version 10.
int Screen::dpiOf(HWND window) {
    using Function = UINT(WINAPI*)(HWND);
    static const Function function = [] {
        const FARPROC found = GetProcAddress(GetModuleHandleW(L"user32.dll"), "GetDpiForWindow");
        Function typed = nullptr;
        std::memcpy(&typed, &found, sizeof typed);
        return typed;
    }();
    if (function) {
        if (const UINT dpi = function(window)) return static_cast<int>(dpi);
    }
    const CClientDC context(window);
    return GetDeviceCaps(context, LOGPIXELSX);
}

void Screen::setDpi(int dpi) {
    m_dpi = dpi;
    NONCLIENTMETRICSW metrics = {};
    metrics.cbSize = sizeof metrics;
    SystemParametersInfoW(SPI_GETNONCLIENTMETRICS, sizeof metrics, &metrics, 0);
    LOGFONTW description = metrics.lfMessageFont;
    description.lfHeight = -MulDiv(9, dpi, 72);  // nine points
    m_font = makeFont(description);
    description.lfWeight = FW_BOLD;
    m_bold = makeFont(description);
}

}  // namespace app::window

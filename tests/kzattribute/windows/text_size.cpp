#include "kzattribute/text_size.h"

SIZE test::textSize(HWND control, const std::basic_string<WCHAR>& text) {
    const HDC device = ::GetDC(control);
    const HGDIOBJ before =
        ::SelectObject(device, reinterpret_cast<HGDIOBJ>(::SendMessageW(control, WM_GETFONT, 0, 0)));
    SIZE size{};
    ::GetTextExtentPoint32W(device, text.c_str(), static_cast<int>(text.size()), &size);
    ::SelectObject(device, before);
    ::ReleaseDC(control, device);
    return size;
}

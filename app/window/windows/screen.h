// What depends on the screen that a window stands on: lengths and the font.
#pragma once

#include <memory>

#include "platform/afx/gdi.h"

namespace app::window {

class Screen {
public:
    explicit Screen(int dpi = 96) { setDpi(dpi); }

    // Of the screen that the window is on.
    static int dpiOf(HWND window);

    void setDpi(int dpi);
    int dpi() const { return m_dpi; }
    // Pixels for a length at 96 to the inch.
    int scaled(int length) const { return MulDiv(length, m_dpi, 96); }

    // That of the system's messages.
    HFONT font() const { return static_cast<HFONT>(m_font->m_hObject); }
    HFONT boldFont() const { return static_cast<HFONT>(m_bold->m_hObject); }

private:
    int m_dpi = 96;
    std::unique_ptr<CGdiObject> m_font, m_bold;
};

// The program's icon in this size. The caller destroys it; null when it cannot be made.
HICON makeProgramIcon(int side);

// What the window's own panes are painted with.
namespace color {
inline constexpr COLORREF kMark = RGB(0x1f, 0x5f, 0xbf);
inline constexpr COLORREF kSurround = RGB(0xd9, 0xdd, 0xe2);
inline constexpr COLORREF kEdge = RGB(0x9a, 0xa3, 0xad);
inline constexpr COLORREF kIcon = RGB(0x33, 0x3b, 0x45);
inline constexpr COLORREF kFaint = RGB(0xa4, 0xab, 0xb3);
inline constexpr COLORREF kBadge = RGB(0xff, 0xd9, 0x66);
inline constexpr COLORREF kBadgeEdge = RGB(0xb8, 0x86, 0x0b);
}  // namespace color

}  // namespace app::window

// Places and sizes of windows: frames, client areas, moving.
#include <algorithm>

#include "platform/headless/desk.h"

namespace headless {

namespace {

int outer_border(DWORD style, DWORD extended_style) {
    if ((extended_style & (WS_EX_STATICEDGE | WS_EX_DLGMODALFRAME)) == WS_EX_STATICEDGE) return 1;
    int border = 0;
    if ((extended_style & WS_EX_DLGMODALFRAME) || (style & (WS_THICKFRAME | WS_DLGFRAME))) border = 2;
    if (style & WS_THICKFRAME) border += GetSystemMetrics(SM_CXFRAME) - GetSystemMetrics(SM_CXDLGFRAME);
    if ((style & (WS_BORDER | WS_DLGFRAME)) || (extended_style & WS_EX_DLGMODALFRAME)) ++border;
    return border;
}

// What the client area loses at the right and at the bottom to shown scroll bars.
SIZE scroll_bars(const Window& window) {
    return {window.style & WS_VSCROLL ? GetSystemMetrics(SM_CXVSCROLL) : 0,
            window.style & WS_HSCROLL ? GetSystemMetrics(SM_CYHSCROLL) : 0};
}

POINT client_origin(const Window& window) {
    POINT origin = {0, 0};
    for (const Window* level = &window; level; level = level->parent ? find_window(level->parent) : nullptr) {
        const RECT frame = frame_of(level->style, level->extended_style);
        origin.x += level->rect.left + frame.left;
        origin.y += level->rect.top + frame.top;
    }
    return origin;
}

}  // namespace

RECT frame_of(DWORD style, DWORD extended_style) {
    const int border = outer_border(style, extended_style);
    const int edge = extended_style & WS_EX_CLIENTEDGE ? GetSystemMetrics(SM_CXEDGE) : 0;
    int caption = 0;
    if ((style & WS_CAPTION) == WS_CAPTION)
        caption = GetSystemMetrics(extended_style & WS_EX_TOOLWINDOW ? SM_CYSMCAPTION : SM_CYCAPTION);
    return {border + edge, border + edge + caption, border + edge, border + edge};
}

SIZE client_size(const Window& window) {
    const RECT frame = frame_of(window.style, window.extended_style);
    const SIZE bars = scroll_bars(window);
    return {std::max<LONG>(window.rect.right - window.rect.left - frame.left - frame.right - bars.cx, 0),
            std::max<LONG>(window.rect.bottom - window.rect.top - frame.top - frame.bottom - bars.cy, 0)};
}

void clamp_size(Window& window, int& width, int& height) {
    if (!(window.style & WS_THICKFRAME) && (window.style & (WS_POPUP | WS_CHILD))) return;
    const int screen_width = GetSystemMetrics(SM_CXSCREEN);
    const int screen_height = GetSystemMetrics(SM_CYSCREEN);
    const RECT frame = frame_of(window.style, window.extended_style);
    MINMAXINFO limits = {};
    limits.ptMaxSize = {screen_width + frame.left + frame.right, screen_height + frame.left + frame.bottom};
    limits.ptMaxPosition = {-frame.left, -frame.left};
    limits.ptMaxTrackSize = {screen_width + 2 * GetSystemMetrics(SM_CXFRAME) + 4,
                             screen_height + 2 * GetSystemMetrics(SM_CYFRAME) + 4};
    if ((window.style & WS_CAPTION) == WS_CAPTION)
        limits.ptMinTrackSize = {GetSystemMetrics(SM_CXMIN), GetSystemMetrics(SM_CYMIN)};
    else
        limits.ptMinTrackSize = {frame.left + frame.right, frame.top + frame.bottom};
    SendMessageW(window.handle, WM_GETMINMAXINFO, 0, reinterpret_cast<LPARAM>(&limits));
    width = std::max<int>(std::min<int>(width, limits.ptMaxTrackSize.x), limits.ptMinTrackSize.x);
    height = std::max<int>(std::min<int>(height, limits.ptMaxTrackSize.y), limits.ptMinTrackSize.y);
}

void set_scroll_bars(Window& window, bool horizontal, bool vertical) {
    const DWORD bars = (horizontal ? WS_HSCROLL : 0) | (vertical ? WS_VSCROLL : 0);
    if ((window.style & (WS_HSCROLL | WS_VSCROLL)) == bars) return;
    const SIZE before = client_size(window);
    window.style = (window.style & ~(WS_HSCROLL | WS_VSCROLL)) | bars;
    const SIZE after = client_size(window);
    if (before.cx == after.cx && before.cy == after.cy) return;
    SendMessageW(window.handle, WM_SIZE, SIZE_RESTORED, MAKELPARAM(after.cx, after.cy));
}

}  // namespace headless

using namespace headless;

BOOL GetClientRect(HWND window, RECT* rect) {
    Window* found = find_window(window);
    if (!found) return FALSE;
    const SIZE size = client_size(*found);
    *rect = {0, 0, size.cx, size.cy};
    return TRUE;
}

BOOL GetWindowRect(HWND window, RECT* rect) {
    Window* found = find_window(window);
    if (!found) return FALSE;
    *rect = found->rect;
    if (!found->parent) return TRUE;
    const POINT origin = client_origin(*find_window(found->parent));
    return OffsetRect(rect, origin.x, origin.y);
}

int MapWindowPoints(HWND from, HWND to, POINT* points, UINT count) {
    POINT shift = {0, 0};
    if (from) {
        Window* source = find_window(from);
        if (!source) return 0;
        shift = client_origin(*source);
    }
    if (to) {
        Window* target = find_window(to);
        if (!target) return 0;
        const POINT origin = client_origin(*target);
        shift = {shift.x - origin.x, shift.y - origin.y};
    }
    for (UINT i = 0; i < count; ++i) points[i] = {points[i].x + shift.x, points[i].y + shift.y};
    return static_cast<int>(MAKELONG(shift.x, shift.y));
}

BOOL ClientToScreen(HWND window, POINT* point) {
    if (!find_window(window)) return FALSE;
    MapWindowPoints(window, nullptr, point, 1);
    return TRUE;
}

BOOL ScreenToClient(HWND window, POINT* point) {
    if (!find_window(window)) return FALSE;
    MapWindowPoints(nullptr, window, point, 1);
    return TRUE;
}

BOOL AdjustWindowRectEx(RECT* rect, DWORD style, BOOL, DWORD extendedStyle) {
    const RECT frame = frame_of(style, extendedStyle);
    *rect = {rect->left - frame.left, rect->top - frame.top, rect->right + frame.right,
             rect->bottom + frame.bottom};
    return TRUE;
}

BOOL MoveWindow(HWND window, int x, int y, int width, int height, BOOL) {
    return SetWindowPos(window, nullptr, x, y, width, height, SWP_NOZORDER | SWP_NOACTIVATE);
}

BOOL SetWindowPos(HWND window, HWND after, int x, int y, int width, int height, UINT flags) {
    std::shared_ptr<Window> found = hold(window);
    if (!found) return FALSE;
    // Coordinates have sixteen bits, though the arguments have more.
    WINDOWPOS position = {window,
                          after,
                          std::clamp(x, -32768, 32767),
                          std::clamp(y, -32768, 32767),
                          std::clamp(width, 0, 32767),
                          std::clamp(height, 0, 32767),
                          flags};
    SendMessageW(window, WM_WINDOWPOSCHANGING, 0, reinterpret_cast<LPARAM>(&position));
    RECT& rect = found->rect;
    const RECT before = rect;
    const SIZE client_before = client_size(*found);
    if (!(position.flags & SWP_NOMOVE)) OffsetRect(&rect, position.x - rect.left, position.y - rect.top);
    if (!(position.flags & SWP_NOSIZE)) {
        rect.right = rect.left + std::max(position.cx, 0);
        rect.bottom = rect.top + std::max(position.cy, 0);
    }
    const SIZE client = client_size(*found);
    if (rect.left == before.left && rect.top == before.top) position.flags |= SWP_NOMOVE;
    if (client.cx == client_before.cx && client.cy == client_before.cy) position.flags |= SWP_NOSIZE;
    if (position.flags & SWP_SHOWWINDOW) found->style |= WS_VISIBLE;
    if (position.flags & SWP_HIDEWINDOW) found->style &= ~WS_VISIBLE;
    const bool front = !(flags & SWP_NOZORDER) && after == HWND_TOP;
    if (front || (!(flags & SWP_NOZORDER) && after)) {
        auto& siblings = found->parent ? find_window(found->parent)->children : desk().top_level;
        auto place = std::find(siblings.begin(), siblings.end(), after);
        if (front || after == HWND_BOTTOM || place != siblings.end()) {
            std::erase(siblings, window);
            place = std::find(siblings.begin(), siblings.end(), after);
            if (front)
                siblings.insert(siblings.begin(), window);
            else
                siblings.insert(place == siblings.end() ? place : place + 1, window);
        }
    }
    SendMessageW(window, WM_WINDOWPOSCHANGED, 0, reinterpret_cast<LPARAM>(&position));
    if ((flags & SWP_SHOWWINDOW) && !(flags & SWP_NOACTIVATE) && !is_child(*found) && IsWindow(window))
        SetActiveWindow(window);
    return TRUE;
}

BOOL InvalidateRect(HWND window, const RECT*, BOOL) {
    return !window || find_window(window) != nullptr;
}

BOOL UpdateWindow(HWND window) {
    return find_window(window) != nullptr;
}

BOOL RedrawWindow(HWND window, const RECT*, HRGN, UINT) {
    return !window || find_window(window) != nullptr;
}

// What a window does with a message that nobody handles.
#include <algorithm>

#include "platform/headless/desk.h"
#include "platform/headless/guard.h"

using namespace headless;

namespace {

LRESULT get_text(const Window& window, WPARAM size, LPARAM buffer) {
    if (size == 0 || !buffer) return 0;
    const std::size_t length = std::min<std::size_t>(window.text.size(), size - 1);
    auto target = reinterpret_cast<LPWSTR>(buffer);
    std::copy_n(window.text.data(), length, target);
    target[length] = 0;
    return static_cast<LRESULT>(length);
}

BOOL set_text(Window& window, LPCWSTR text) {
    return guarded([&]() -> BOOL {
        if (text && !IS_INTRESOURCE(text))
            window.text = text;
        else
            window.text.clear();
        return TRUE;
    });
}

void changing_position(Window& window, WINDOWPOS& position) {
    if (position.flags & SWP_NOSIZE) return;
    clamp_size(window, position.cx, position.cy);
}

// Moves and sizes are told only if they happened: SetWindowPos marks what stayed as it was.
void changed_position(Window& window, const WINDOWPOS& position) {
    if (!(position.flags & SWP_NOMOVE)) {
        const RECT frame = frame_of(window.style, window.extended_style);
        SendMessageW(window.handle, WM_MOVE, 0,
                     MAKELPARAM(window.rect.left + frame.left, window.rect.top + frame.top));
    }
    if (!(position.flags & SWP_NOSIZE)) {
        const SIZE client = client_size(window);
        SendMessageW(window.handle, WM_SIZE, SIZE_RESTORED, MAKELPARAM(client.cx, client.cy));
    }
}

}  // namespace

LRESULT DefWindowProcW(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    std::shared_ptr<Window> found = hold(window);
    if (!found) return 0;
    switch (message) {
        case WM_NCCREATE:
            return set_text(*found, reinterpret_cast<CREATESTRUCTW*>(lParam)->lpszName);
        case WM_SETTEXT:
            return set_text(*found, reinterpret_cast<LPCWSTR>(lParam));
        case WM_GETTEXT:
            return get_text(*found, wParam, lParam);
        case WM_GETTEXTLENGTH:
            return static_cast<LRESULT>(found->text.size());
        case WM_CLOSE:
            DestroyWindow(window);
            return 0;
        case WM_SYSCOMMAND:
            if ((wParam & 0xFFF0) == SC_CLOSE) SendMessageW(window, WM_CLOSE, 0, 0);
            return 0;
        case WM_ACTIVATE:
            if (LOWORD(wParam) != WA_INACTIVE) SetFocus(window);
            return 0;
        case WM_SETREDRAW:
            if (wParam)
                found->style |= WS_VISIBLE;
            else
                found->style &= ~WS_VISIBLE;
            return 0;
        case WM_WINDOWPOSCHANGING:
            changing_position(*found, *reinterpret_cast<WINDOWPOS*>(lParam));
            return 0;
        case WM_WINDOWPOSCHANGED:
            changed_position(*found, *reinterpret_cast<WINDOWPOS*>(lParam));
            return 0;
        case WM_MOUSEWHEEL:
            if (is_child(*found)) return SendMessageW(found->parent, message, wParam, lParam);
            return 0;
        case WM_ERASEBKGND:
            return 1;
        default:
            return 0;
    }
}

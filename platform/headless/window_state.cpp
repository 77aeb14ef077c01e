// A window's numbers, text, visibility and whether it takes input.
#include <cstring>

#include "platform/headless/desk.h"

using namespace headless;

namespace {

// The place of a window's bytes at an index; null with a last error outside them.
BYTE* extra_bytes(Window& window, int index, std::size_t size) {
    if (index >= 0 && static_cast<std::size_t>(index) + size <= window.extra.size())
        return window.extra.data() + index;
    SetLastError(ERROR_INVALID_INDEX);
    return nullptr;
}

template <class Number>
Number get_long(HWND handle, int index) {
    Window* window = find_window(handle);
    if (!window) return 0;
    switch (index) {
        case GWL_STYLE:
            return static_cast<Number>(static_cast<LONG>(window->style));
        case GWL_EXSTYLE:
            return static_cast<Number>(static_cast<LONG>(window->extended_style));
        case GWLP_WNDPROC:
            return static_cast<Number>(reinterpret_cast<LONG_PTR>(window->procedure));
        case GWLP_HINSTANCE:
            return static_cast<Number>(reinterpret_cast<LONG_PTR>(window->instance));
        case GWLP_HWNDPARENT:
            return static_cast<Number>(
                reinterpret_cast<LONG_PTR>(window->parent ? window->parent : window->owner));
        case GWLP_ID:
            return static_cast<Number>(window->id);
        case GWLP_USERDATA:
            return static_cast<Number>(window->user_data);
        default: {
            Number value = 0;
            if (const BYTE* bytes = extra_bytes(*window, index, sizeof(value)))
                std::memcpy(&value, bytes, sizeof(value));
            return value;
        }
    }
}

template <class Number>
Number set_long(HWND handle, int index, Number value) {
    Window* window = find_window(handle);
    if (!window) return 0;
    const Number before = get_long<Number>(handle, index);
    switch (index) {
        case GWL_STYLE:
            window->style = static_cast<DWORD>(value);
            break;
        case GWL_EXSTYLE:
            window->extended_style = static_cast<DWORD>(value);
            break;
        case GWLP_WNDPROC:
            window->procedure = reinterpret_cast<WNDPROC>(static_cast<LONG_PTR>(value));
            break;
        case GWLP_HINSTANCE:
            window->instance = reinterpret_cast<HINSTANCE>(static_cast<LONG_PTR>(value));
            break;
        case GWLP_ID:
            window->id = static_cast<LONG_PTR>(value);
            break;
        case GWLP_USERDATA:
            window->user_data = static_cast<LONG_PTR>(value);
            break;
        default:
            if (BYTE* bytes = extra_bytes(*window, index, sizeof(value)))
                std::memcpy(bytes, &value, sizeof(value));
    }
    return before;
}

}  // namespace

LONG_PTR GetWindowLongPtrW(HWND window, int index) {
    return get_long<LONG_PTR>(window, index);
}

LONG_PTR SetWindowLongPtrW(HWND window, int index, LONG_PTR value) {
    return set_long<LONG_PTR>(window, index, value);
}

LONG GetWindowLongW(HWND window, int index) {
    return get_long<LONG>(window, index);
}

LONG SetWindowLongW(HWND window, int index, LONG value) {
    return set_long<LONG>(window, index, value);
}

BOOL SetWindowTextW(HWND window, LPCWSTR text) {
    if (!find_window(window)) return FALSE;
    return SendMessageW(window, WM_SETTEXT, 0, reinterpret_cast<LPARAM>(text)) != 0;
}

int GetWindowTextW(HWND window, LPWSTR buffer, int size) {
    if (!buffer || size <= 0) return 0;
    buffer[0] = 0;
    return static_cast<int>(
        SendMessageW(window, WM_GETTEXT, static_cast<WPARAM>(size), reinterpret_cast<LPARAM>(buffer)));
}

int GetWindowTextLengthW(HWND window) {
    return static_cast<int>(SendMessageW(window, WM_GETTEXTLENGTH, 0, 0));
}

BOOL EnableWindow(HWND window, BOOL enable) {
    std::shared_ptr<Window> found = hold(window);
    if (!found) return FALSE;
    const bool was_disabled = (found->style & WS_DISABLED) != 0;
    if (enable && was_disabled) {
        found->style &= ~WS_DISABLED;
        SendMessageW(window, WM_ENABLE, TRUE, 0);
    } else if (!enable && !was_disabled) {
        found->style |= WS_DISABLED;
        // A window that takes no input cannot have the focus.
        if (is_within(desk().focus, window)) SetFocus(nullptr);
        SendMessageW(window, WM_ENABLE, FALSE, 0);
    }
    return was_disabled;
}

BOOL IsWindowEnabled(HWND window) {
    Window* found = find_window(window);
    return found && !(found->style & WS_DISABLED);
}

BOOL IsWindowVisible(HWND window) {
    for (Window* level = find_window(window); level; level = find_window(level->parent)) {
        if (!(level->style & WS_VISIBLE)) return FALSE;
        if (!level->parent) return TRUE;
    }
    return FALSE;
}

BOOL ShowWindow(HWND window, int command) {
    std::shared_ptr<Window> found = hold(window);
    if (!found) return FALSE;
    const bool was_visible = (found->style & WS_VISIBLE) != 0;
    const bool show = command != SW_HIDE;
    if (show == was_visible) return was_visible;
    SendMessageW(window, WM_SHOWWINDOW, show, 0);
    if (!IsWindow(window)) return was_visible;
    const bool activate = show && !is_child(*found) && command != SW_SHOWNA && command != SW_SHOWNOACTIVATE;
    UINT flags = SWP_NOSIZE | SWP_NOMOVE | (show ? SWP_SHOWWINDOW : SWP_HIDEWINDOW);
    if (!activate) flags |= SWP_NOACTIVATE | SWP_NOZORDER;
    SetWindowPos(window, nullptr, 0, 0, 0, 0, flags);
    if (!show && IsWindow(window)) leave_window(*found);
    return was_visible;
}

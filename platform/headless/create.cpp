// A window's birth and death, with the messages of each in Windows' order.
#include <algorithm>

#include "platform/headless/desk.h"
#include "platform/headless/guard.h"

using namespace headless;

namespace {

// Windows gives every overlapped window a caption, and one that asks for no place a default one.
DWORD born_style(DWORD style) {
    if (!(style & (WS_CHILD | WS_POPUP))) style |= WS_CAPTION | WS_CLIPSIBLINGS;
    if ((style & (WS_CHILD | WS_POPUP)) == WS_POPUP) style |= WS_CLIPSIBLINGS;
    return style;
}

DWORD born_extended_style(DWORD style, DWORD extended_style) {
    const bool edge = (extended_style & WS_EX_DLGMODALFRAME) ||
                      (!(extended_style & WS_EX_STATICEDGE) && (style & (WS_DLGFRAME | WS_THICKFRAME)));
    return edge ? extended_style | WS_EX_WINDOWEDGE : extended_style & ~WS_EX_WINDOWEDGE;
}

void place(Window& window, const CREATESTRUCTW& create) {
    int x = create.x;
    int y = create.y;
    int width = create.cx;
    int height = create.cy;
    if (x == CW_USEDEFAULT) x = y = 0;
    if (width == CW_USEDEFAULT) {
        width = is_child(window) ? 0 : GetSystemMetrics(SM_CXSCREEN) * 3 / 4;
        height = is_child(window) ? 0 : GetSystemMetrics(SM_CYSCREEN) * 3 / 4;
    }
    window.rect = {x, y, x + std::max(width, 0), y + std::max(height, 0)};
}

// A new window, known by its handle and to its parent; without memory for it nothing has changed.
std::shared_ptr<Window> add_window(WindowClass& window_class, DWORD style, DWORD extended_style, HWND parent,
                                   HMENU menu_or_id, HINSTANCE instance) {
    auto window = std::make_shared<Window>();
    window->handle = reinterpret_cast<HWND>(desk().last_handle += 2);
    window->window_class = window_class.shared_from_this();
    window->procedure = window_class.procedure;
    window->instance = instance;
    window->style = born_style(style) & ~WS_VISIBLE;
    window->extended_style = born_extended_style(window->style, extended_style);
    window->id = reinterpret_cast<LONG_PTR>(menu_or_id);
    window->extra.resize(static_cast<std::size_t>(window_class.extra_bytes));
    if (is_child(*window))
        window->parent = parent;
    else if (parent)
        window->owner = GetAncestor(parent, GA_ROOT);
    auto& siblings = window->parent ? find_window(parent)->children : desk().top_level;
    if (siblings.size() == siblings.capacity()) siblings.reserve(2 * siblings.size() + 8);
    desk().windows.emplace(window->handle, window);
    siblings.push_back(window->handle);
    ++window_class.windows;
    return window;
}

// Forgets a window: from here on its handle is stale.
void remove_window(Window& window) {
    auto& siblings =
        window.parent && IsWindow(window.parent) ? find_window(window.parent)->children : desk().top_level;
    std::erase(siblings, window.handle);
    std::erase_if(desk().queue, [&](const MSG& message) { return message.hwnd == window.handle; });
    for (HWND* place : {&desk().focus, &desk().active, &desk().capture})
        if (*place == window.handle) *place = nullptr;
    --window.window_class->windows;
    desk().last_found = nullptr;
    desk().windows.erase(window.handle);
}

void send_destroy(HWND window) {
    SendMessageW(window, WM_DESTROY, 0, 0);
    const std::shared_ptr<Window> found = hold(window);
    if (!found) return;
    // Without a copy of the list, which would need memory; a handler may destroy the child.
    for (std::size_t i = 0; i < found->children.size();) {
        const HWND child = found->children[i];
        send_destroy(child);
        if (i < found->children.size() && found->children[i] == child) ++i;
    }
}

// Children first. Whatever a handler of WM_NCDESTROY does, the window is gone afterwards.
void finish_destroy(HWND window) {
    std::shared_ptr<Window> found = hold(window);
    if (!found) return;
    while (!found->children.empty()) finish_destroy(found->children.front());
    SendMessageW(window, WM_NCDESTROY, 0, 0);
    if (IsWindow(window)) remove_window(*found);
}

void destroy_owned(HWND owner) {
    const auto& windows = desk().top_level;
    for (std::size_t i = 0; i < windows.size();) {
        const HWND window = windows[i];
        // One that refuses stays. Handlers may destroy others: from the start again.
        const bool destroyed = find_window(window)->owner == owner && DestroyWindow(window);
        i = destroyed ? 0 : i + 1;
    }
}

}  // namespace

HWND CreateWindowExW(DWORD extendedStyle, LPCWSTR className, LPCWSTR text, DWORD style, int x, int y,
                     int width, int height, HWND parent, HMENU menuOrId, HINSTANCE instance,
                     LPVOID parameter) {
    WindowClass* window_class = className ? find_class(className) : nullptr;
    if (!window_class) {
        SetLastError(ERROR_CANNOT_FIND_WND_CLASS);
        return nullptr;
    }
    const bool child = (style & WS_CHILD) != 0;
    if ((parent && !find_window(parent)) || (child && !parent)) {
        SetLastError(ERROR_INVALID_WINDOW_HANDLE);
        return nullptr;
    }
    const std::shared_ptr<Window> window =
        guarded([&] { return add_window(*window_class, style, extendedStyle, parent, menuOrId, instance); });
    if (!window) return nullptr;
    const HWND handle = window->handle;
    CREATESTRUCTW create = {
        parameter, instance,  menuOrId,     parent, height, width, y, x, static_cast<LONG>(style),
        text,      className, extendedStyle};
    CBT_CREATEWNDW hooked = {&create, nullptr};
    if (call_cbt_hooks(HCBT_CREATEWND, reinterpret_cast<WPARAM>(handle), reinterpret_cast<LPARAM>(&hooked))) {
        if (IsWindow(handle)) remove_window(*window);
        return nullptr;
    }
    place(*window, create);
    int clamped_width = window->rect.right - window->rect.left;
    int clamped_height = window->rect.bottom - window->rect.top;
    clamp_size(*window, clamped_width, clamped_height);
    window->rect.right = window->rect.left + clamped_width;
    window->rect.bottom = window->rect.top + clamped_height;
    create.cx = clamped_width;
    create.cy = clamped_height;

    if (!SendMessageW(handle, WM_NCCREATE, 0, reinterpret_cast<LPARAM>(&create))) {
        if (IsWindow(handle)) remove_window(*window);
        return nullptr;
    }
    if (SendMessageW(handle, WM_CREATE, 0, reinterpret_cast<LPARAM>(&create)) == -1) {
        if (IsWindow(handle)) DestroyWindow(handle);
        return nullptr;
    }
    if (!IsWindow(handle)) return nullptr;
    const SIZE client = client_size(*window);
    SendMessageW(handle, WM_SIZE, SIZE_RESTORED, MAKELPARAM(client.cx, client.cy));
    SendMessageW(handle, WM_MOVE, 0, MAKELPARAM(window->rect.left, window->rect.top));
    if (child && !(extendedStyle & WS_EX_NOPARENTNOTIFY) && IsWindow(handle))
        SendMessageW(parent, WM_PARENTNOTIFY, MAKEWPARAM(WM_CREATE, window->id),
                     reinterpret_cast<LPARAM>(handle));
    if ((style & WS_VISIBLE) && IsWindow(handle)) ShowWindow(handle, SW_SHOW);
    return IsWindow(handle) ? handle : nullptr;
}

BOOL DestroyWindow(HWND window) {
    std::shared_ptr<Window> found = hold(window);
    if (!found || found->being_destroyed) return FALSE;
    if (call_cbt_hooks(HCBT_DESTROYWND, reinterpret_cast<WPARAM>(window), 0)) return FALSE;
    found->being_destroyed = true;
    if (is_child(*found) && !(found->extended_style & WS_EX_NOPARENTNOTIFY))
        SendMessageW(found->parent, WM_PARENTNOTIFY, MAKEWPARAM(WM_DESTROY, found->id),
                     reinterpret_cast<LPARAM>(window));
    if (!is_child(*found)) destroy_owned(window);
    if (found->style & WS_VISIBLE) ShowWindow(window, SW_HIDE);
    leave_window(*found);
    send_destroy(window);
    finish_destroy(window);
    return TRUE;
}

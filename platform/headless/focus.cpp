// Who is active, who has the focus, and who is told when that changes.
#include "platform/headless/desk.h"

namespace headless {

namespace {

// A window takes the focus unless it or a parent is disabled.
bool takes_input(HWND window) {
    for (Window* level = find_window(window); level; level = find_window(level->parent)) {
        if (level->style & (WS_DISABLED | WS_MINIMIZE)) return false;
        if (!level->parent) return true;
    }
    return false;
}

void move_focus(HWND window) {
    const HWND before = desk().focus;
    if (before == window) return;
    desk().focus = window;
    if (before) SendMessageW(before, WM_KILLFOCUS, reinterpret_cast<WPARAM>(window), 0);
    // The one that lost it may have sent it elsewhere.
    if (window && desk().focus == window)
        SendMessageW(window, WM_SETFOCUS, reinterpret_cast<WPARAM>(before), 0);
}

bool activate(HWND window) {
    const HWND before = desk().active;
    if (before == window) return true;
    desk().active = window;
    if (before)
        SendMessageW(before, WM_ACTIVATE, MAKEWPARAM(WA_INACTIVE, 0), reinterpret_cast<LPARAM>(window));
    if (window && desk().active == window)
        SendMessageW(window, WM_ACTIVATE, MAKEWPARAM(WA_ACTIVE, 0), reinterpret_cast<LPARAM>(before));
    if (desk().active != window) return false;
    // The focus goes with the activation, even if the window did not take it for itself or for a child.
    if (desk().focus && (!window || !is_within(desk().focus, window))) move_focus(window);
    return true;
}

}  // namespace

void leave_window(Window& window) {
    if (is_child(window)) {
        if (is_within(desk().focus, window.handle)) SetFocus(window.parent);
    } else if (desk().active == window.handle) {
        Window* owner = window.owner ? find_window(window.owner) : nullptr;
        const bool hand_over = owner && takes_input(owner->handle) && (owner->style & WS_VISIBLE);
        activate(hand_over ? owner->handle : nullptr);
    }
    if (is_within(desk().focus, window.handle)) move_focus(nullptr);
    if (is_within(desk().capture, window.handle)) desk().capture = nullptr;
}

}  // namespace headless

using namespace headless;

HWND SetFocus(HWND window) {
    const HWND before = desk().focus;
    if (!window) {
        move_focus(nullptr);
        return before;
    }
    if (!find_window(window)) return nullptr;
    if (!takes_input(window)) return nullptr;
    if (!activate(GetAncestor(window, GA_ROOT)) || !IsWindow(window)) return nullptr;
    move_focus(window);
    return before;
}

HWND GetFocus() {
    return desk().focus;
}

HWND SetActiveWindow(HWND window) {
    const HWND before = desk().active;
    Window* found = find_window(window);
    if (!found || found->parent || !takes_input(window)) return nullptr;
    activate(window);
    return before;
}

HWND GetActiveWindow() {
    return desk().active;
}

HWND GetForegroundWindow() {
    return desk().active;
}

BOOL SetForegroundWindow(HWND window) {
    SetActiveWindow(window);
    return desk().active == window;
}

HWND SetCapture(HWND window) {
    const HWND before = desk().capture;
    if (find_window(window)) desk().capture = window;
    return before;
}

HWND GetCapture() {
    return desk().capture;
}

BOOL ReleaseCapture() {
    desk().capture = nullptr;
    return TRUE;
}

std::int16_t GetKeyState(int) {
    return 0;
}

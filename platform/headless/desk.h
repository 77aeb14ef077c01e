// The desk: every headless window and window class of the process, and what the windows share.
//
// A window is found by its handle, a number that is never given twice; whoever holds a stale one finds
// nothing. Whoever sends a message keeps the window alive meanwhile (hold), so that a handler may destroy its
// own window.
#pragma once

#include <deque>
#include <memory>
#include <string>
#include <unordered_map>
#include <vector>

#include "platform/headless/include/commctrl.h"
#include "platform/headless/include/windows.h"

namespace headless {

struct WindowClass : std::enable_shared_from_this<WindowClass> {
    std::u16string name;  // as registered
    WNDPROC procedure = nullptr;
    UINT style = 0;
    int extra_bytes = 0;
    HINSTANCE instance = nullptr;
    ATOM atom = 0;
    int windows = 0;
};

// What a built-in control keeps for its window.
struct ControlState {
    virtual ~ControlState() = default;
};

struct Window {
    HWND handle = nullptr;
    std::shared_ptr<WindowClass> window_class;
    WNDPROC procedure = nullptr;
    HINSTANCE instance = nullptr;
    DWORD style = 0;
    DWORD extended_style = 0;
    LONG_PTR id = 0;  // a child's number, another window's menu
    LONG_PTR user_data = 0;
    std::vector<BYTE> extra;
    HWND parent = nullptr;       // of a child, else null
    HWND owner = nullptr;        // of any other window
    std::vector<HWND> children;  // topmost first, which is the order of creation
    std::u16string text;
    RECT rect = {};  // in the parent's client coordinates, on the screen for a window without parent
    bool being_destroyed = false;
    std::unique_ptr<ControlState> state;
};

struct Desk {
    Desk();

    std::unordered_map<HWND, std::shared_ptr<Window>> windows;
    const std::shared_ptr<Window>* last_found = nullptr;  // of windows
    std::vector<HWND> top_level;
    std::vector<std::shared_ptr<WindowClass>> classes;
    std::deque<MSG> queue;
    bool quitting = false;
    int exit_code = 0;
    HWND focus = nullptr;
    HWND active = nullptr;
    HWND capture = nullptr;
    std::uintptr_t last_handle = 0x10000;
    ATOM last_atom = 0xC000;
};

Desk& desk();

// Null, and ERROR_INVALID_WINDOW_HANDLE, when there is no such window.
Window* find_window(HWND handle);
std::shared_ptr<Window> hold(HWND handle);

WindowClass* find_class(LPCWSTR name);

inline bool is_child(const Window& window) {
    return (window.style & WS_CHILD) != 0;
}

// The window or one of its ancestors.
bool is_within(HWND window, HWND ancestor);

// Calls the CBT hooks. Nonzero refuses what is about to happen.
LRESULT call_cbt_hooks(int code, WPARAM wParam, LPARAM lParam);

// The frame's thickness on each side; what is left is the client area.
RECT frame_of(DWORD style, DWORD extended_style);
SIZE client_size(const Window& window);

// Asks a window with a sizing frame, or a top-level one, how small and big it may be, and clamps.
void clamp_size(Window& window, int& width, int& height);

// Moves focus and activation away from a window that is about to vanish.
void leave_window(Window& window);

// Shows or hides the bars of a scrolling control; sends WM_SIZE when that changes its client area.
void set_scroll_bars(Window& window, bool horizontal, bool vertical);

}  // namespace headless

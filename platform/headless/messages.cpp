// Sending, the queue of posted messages, and waiting on it.
#include <algorithm>

#include "platform/headless/desk.h"
#include "platform/headless/guard.h"

using namespace headless;

LRESULT SendMessageW(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    // Held: the handler may destroy the window.
    std::shared_ptr<Window> target = hold(window);
    return target ? target->procedure(window, message, wParam, lParam) : 0;
}

LRESULT CallWindowProcW(WNDPROC procedure, HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    return find_window(window) && procedure ? procedure(window, message, wParam, lParam) : 0;
}

BOOL PostMessageW(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    if (window && !find_window(window)) return FALSE;
    return guarded([&]() -> BOOL {
        desk().queue.push_back({window, message, wParam, lParam, 0, {0, 0}});
        return TRUE;
    });
}

void PostQuitMessage(int exitCode) {
    desk().quitting = true;
    desk().exit_code = exitCode;
}

BOOL PeekMessageW(MSG* message, HWND window, UINT first, UINT last, UINT remove) {
    auto& queue = desk().queue;
    auto wanted = [&](const MSG& posted) {
        if (window && !is_within(posted.hwnd, window)) return false;
        return (first == 0 && last == 0) || (posted.message >= first && posted.message <= last);
    };
    auto found = std::find_if(queue.begin(), queue.end(), wanted);
    if (found != queue.end()) {
        *message = *found;
        if (remove & PM_REMOVE) queue.erase(found);
        return TRUE;
    }
    // The end is told only when nothing else is left.
    if (!desk().quitting) return FALSE;
    *message = {nullptr, WM_QUIT, static_cast<WPARAM>(desk().exit_code), 0, 0, {0, 0}};
    if (remove & PM_REMOVE) desk().quitting = false;
    return TRUE;
}

BOOL GetMessageW(MSG* message, HWND window, UINT first, UINT last) {
    if (PeekMessageW(message, window, first, last, PM_REMOVE)) return message->message != WM_QUIT;
    SetLastError(ERROR_NO_INPUT);
    return -1;
}

BOOL WaitMessage() {
    if (!desk().queue.empty() || desk().quitting) return TRUE;
    SetLastError(ERROR_NO_INPUT);
    return FALSE;
}

BOOL TranslateMessage(const MSG* message) {
    if (message->message != WM_KEYDOWN && message->message != WM_SYSKEYDOWN) return FALSE;
    const WPARAM key = message->wParam;
    const bool plain = (key >= '0' && key <= '9') || (key >= 'A' && key <= 'Z') || key == VK_SPACE ||
                       key == VK_RETURN || key == VK_ESCAPE || key == VK_TAB || key == VK_BACK;
    WPARAM character = plain ? key : 0;
    if (key >= 'A' && key <= 'Z') character = key + ('a' - 'A');
    if (key == static_cast<WPARAM>(VK_ADD)) character = '+';
    if (key == static_cast<WPARAM>(VK_SUBTRACT)) character = '-';
    if (key == static_cast<WPARAM>(VK_MULTIPLY)) character = '*';
    if (character == 0) return FALSE;
    // In front of what was posted after the key.
    const UINT translated = message->message == WM_KEYDOWN ? WM_CHAR : WM_SYSCHAR;
    return guarded([&]() -> BOOL {
        desk().queue.push_front({message->hwnd, translated, character, message->lParam, 0, {0, 0}});
        return TRUE;
    });
}

LRESULT DispatchMessageW(const MSG* message) {
    return message->hwnd ? SendMessageW(message->hwnd, message->message, message->wParam, message->lParam)
                         : 0;
}

// The keys that move about in a dialog and press its buttons.
#include <algorithm>

#include "platform/headless/dialog.h"
#include "platform/headless/guard.h"

using namespace headless;

namespace {

// The controls in the order of the tab key: a window that hands the key to its controls stands for them.
void collect(HWND parent, std::vector<HWND>& controls) {
    Window* found = find_window(parent);
    if (!found) return;
    for (HWND child : found->children) {
        const Window* window = find_window(child);
        if (!(window->style & WS_VISIBLE) && IsWindowVisible(parent)) continue;
        if (window->style & WS_DISABLED) continue;
        if (window->extended_style & WS_EX_CONTROLPARENT)
            collect(child, controls);
        else
            controls.push_back(child);
    }
}

bool takes_tab(HWND control) {
    return (GetWindowLongW(control, GWL_STYLE) & static_cast<LONG>(WS_TABSTOP)) != 0;
}

bool is_button(LRESULT code) {
    return (code & (DLGC_DEFPUSHBUTTON | DLGC_UNDEFPUSHBUTTON)) != 0;
}

void send_command(HWND dialog, int id) {
    const HWND control = GetDlgItem(dialog, id);
    if (control && !IsWindowEnabled(control)) return;
    SendMessageW(dialog, WM_COMMAND, MAKEWPARAM(id, BN_CLICKED), reinterpret_cast<LPARAM>(control));
}

void press_default(HWND dialog) {
    const HWND focus = GetFocus();
    if (focus && IsChild(dialog, focus) && is_button(SendMessageW(focus, WM_GETDLGCODE, 0, 0))) {
        SendMessageW(GetParent(focus), WM_COMMAND, MAKEWPARAM(GetDlgCtrlID(focus), BN_CLICKED),
                     reinterpret_cast<LPARAM>(focus));
        return;
    }
    const LRESULT answer = SendMessageW(dialog, DM_GETDEFID, 0, 0);
    send_command(dialog, HIWORD(answer) == DC_HASDEFID ? LOWORD(answer) : IDOK);
}

void tab(HWND dialog, HWND from, bool previous) {
    const HWND next = GetNextDlgTabItem(dialog, from, previous);
    if (!next) return;
    SetFocus(next);
    const LRESULT code = SendMessageW(next, WM_GETDLGCODE, 0, 0);
    if (code & DLGC_UNDEFPUSHBUTTON)
        SendMessageW(dialog, DM_SETDEFID, static_cast<WPARAM>(GetDlgCtrlID(next)), 0);
}

bool key_acts(HWND dialog, const MSG& message) {
    const LRESULT code =
        SendMessageW(message.hwnd, WM_GETDLGCODE, message.wParam, reinterpret_cast<LPARAM>(&message));
    if (code & DLGC_WANTALLKEYS) return false;
    switch (static_cast<int>(message.wParam)) {
        case VK_TAB:
            if (code & DLGC_WANTTAB) return false;
            tab(dialog, message.hwnd, GetKeyState(VK_SHIFT) < 0);
            return true;
        case VK_RETURN:
            press_default(dialog);
            return true;
        case VK_ESCAPE:
            send_command(dialog, IDCANCEL);
            return true;
        default:
            return false;
    }
}

}  // namespace

HWND GetNextDlgTabItem(HWND dialog, HWND control, BOOL previous) {
    return guarded([&]() -> HWND {
        std::vector<HWND> controls;
        collect(dialog, controls);
        if (previous) std::reverse(controls.begin(), controls.end());
        const auto here = std::find(controls.begin(), controls.end(), control);
        // Around, starting behind the control.
        if (here != controls.end()) std::rotate(controls.begin(), here + 1, controls.end());
        const auto next = std::find_if(controls.begin(), controls.end(), takes_tab);
        if (next != controls.end()) return *next;
        return controls.empty() ? nullptr : controls.front();
    });
}

BOOL IsDialogMessageW(HWND dialog, MSG* message) {
    if (!find_window(dialog)) return FALSE;
    if (message->hwnd != dialog && !IsChild(dialog, message->hwnd)) return FALSE;
    if (message->message == WM_KEYDOWN && key_acts(dialog, *message)) return TRUE;
    TranslateMessage(message);
    DispatchMessageW(message);
    return TRUE;
}

// What a dialog does with a message that its own procedure leaves alone.
#include <utility>

#include "platform/headless/dialog.h"
#include "platform/headless/guard.h"

using namespace headless;

namespace {

void leave(Window& window, DialogState& state) {
    const HWND focus = GetFocus();
    if (focus && IsChild(window.handle, focus)) state.focus = focus;
}

bool return_to(Window& window, DialogState& state) {
    if (!state.focus || !IsChild(window.handle, state.focus)) return false;
    SetFocus(state.focus);
    return true;
}

void take_focus(Window& window, DialogState& state) {
    if (return_to(window, state)) return;
    const HWND first = GetNextDlgTabItem(window.handle, nullptr, FALSE);
    if (first) SetFocus(first);
}

void set_default_style(HWND button, DWORD from, DWORD to) {
    if (button && (SendMessageW(button, WM_GETDLGCODE, 0, 0) & from))
        SendMessageW(button, BM_SETSTYLE, to, TRUE);
}

void set_default(HWND dialog, DialogState& state, int id) {
    const int before = std::exchange(state.default_id, id);
    if (before != id) set_default_style(GetDlgItem(dialog, before), DLGC_DEFPUSHBUTTON, BS_PUSHBUTTON);
    set_default_style(GetDlgItem(dialog, id), DLGC_UNDEFPUSHBUTTON, BS_DEFPUSHBUTTON);
}

LRESULT close(HWND dialog) {
    const HWND cancel = GetDlgItem(dialog, IDCANCEL);
    if (!cancel || IsWindowEnabled(cancel))
        PostMessageW(dialog, WM_COMMAND, MAKEWPARAM(IDCANCEL, BN_CLICKED), reinterpret_cast<LPARAM>(cancel));
    return 0;
}

void go_to(HWND dialog, WPARAM target, bool is_window) {
    const HWND control =
        is_window ? reinterpret_cast<HWND>(target) : GetNextDlgTabItem(dialog, GetFocus(), target != 0);
    if (control) SetFocus(control);
}

LRESULT handle_default(Window& window, DialogState& state, UINT message, WPARAM wParam, LPARAM lParam) {
    const HWND dialog = window.handle;
    switch (message) {
        case WM_SHOWWINDOW:
            if (!wParam) leave(window, state);
            break;
        case WM_ACTIVATE:
            if (LOWORD(wParam) == WA_INACTIVE)
                leave(window, state);
            else if (!is_child(window))
                take_focus(window, state);
            return 0;
        case WM_SETFOCUS:
            take_focus(window, state);
            return 0;
        case WM_SETFONT:
            state.shown_font = wParam;
            return 0;
        case WM_GETFONT:
            return static_cast<LRESULT>(state.shown_font);
        case DM_SETDEFID:
            set_default(dialog, state, static_cast<int>(wParam));
            return 1;
        case DM_GETDEFID:
            return state.default_id ? MAKELRESULT(state.default_id, DC_HASDEFID) : 0;
        case WM_NEXTDLGCTL:
            go_to(dialog, wParam, lParam != 0);
            return 0;
        case WM_CLOSE:
            return close(dialog);
        case WM_NCDESTROY:
            if (state.font) DeleteObject(std::exchange(state.font, nullptr));
            SetWindowLongPtrW(dialog, DWLP_DLGPROC, 0);
            break;
        default:
            break;
    }
    return DefWindowProcW(dialog, message, wParam, lParam);
}

}  // namespace

DialogState* headless::dialog_state(Window& window) {
    return dynamic_cast<DialogState*>(window.state.get());
}

LRESULT DefDlgProcW(HWND dialog, UINT message, WPARAM wParam, LPARAM lParam) {
    const std::shared_ptr<Window> window = hold(dialog);
    if (!window) return 0;
    if (message == WM_NCCREATE) {
        window->state = guarded([] { return std::make_unique<DialogState>(); });
        if (!window->state) return FALSE;
    }
    SetWindowLongPtrW(dialog, DWLP_MSGRESULT, 0);
    const auto procedure = reinterpret_cast<DLGPROC>(GetWindowLongPtrW(dialog, DWLP_DLGPROC));
    const INT_PTR handled = procedure ? procedure(dialog, message, wParam, lParam) : 0;
    // The answer to this one is the procedure's own.
    if (message == WM_INITDIALOG) return handled;
    if (!IsWindow(dialog)) return 0;
    DialogState* state = dialog_state(*window);
    if (!handled && state) return handle_default(*window, *state, message, wParam, lParam);
    return GetWindowLongPtrW(dialog, DWLP_MSGRESULT);
}

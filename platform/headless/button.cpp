// Push buttons, check boxes and group boxes.
//
// A click (the mouse, the space bar, or BM_CLICK) tells the parent BN_CLICKED; automatic check boxes
// go to their next state first. A second click of a double click counts as a click, unless the style
// asks for BN_DOUBLECLICKED.
#include "platform/headless/controls.h"
#include "platform/headless/desk.h"
#include "platform/headless/guard.h"

using namespace headless;

namespace {

struct Button : ControlState {
    UINT check = BST_UNCHECKED;
    bool pushed = false;
    WPARAM font = 0;
};

DWORD kind_of(const Window& window) {
    return window.style & BS_TYPEMASK;
}

bool has_check(DWORD kind) {
    return kind == BS_CHECKBOX || kind == BS_AUTOCHECKBOX || kind == BS_RADIOBUTTON || kind == BS_3STATE ||
           kind == BS_AUTO3STATE || kind == BS_AUTORADIOBUTTON;
}

bool is_radio(DWORD kind) {
    return kind == BS_RADIOBUTTON || kind == BS_AUTORADIOBUTTON;
}

void tell_parent(const Window& window, UINT code) {
    if (window.parent)
        SendMessageW(window.parent, WM_COMMAND, MAKEWPARAM(window.id, code),
                     reinterpret_cast<LPARAM>(window.handle));
}

bool starts_group(HWND window) {
    return (GetWindowLongW(window, GWL_STYLE) & static_cast<LONG>(WS_GROUP)) != 0;
}

// The buttons of a group stand one after another; the first one, and the first of the next
// group, have WS_GROUP.
void uncheck_rest_of_group(HWND chosen) {
    auto uncheck = [](HWND other) {
        Window* found = find_window(other);
        if (found->procedure && kind_of(*found) == BS_AUTORADIOBUTTON &&
            dynamic_cast<Button*>(found->state.get()))
            SendMessageW(other, BM_SETCHECK, BST_UNCHECKED, 0);
    };
    for (HWND other = chosen; !starts_group(other);) {
        other = GetWindow(other, GW_HWNDPREV);
        if (!other) break;
        uncheck(other);
    }
    for (HWND other = GetWindow(chosen, GW_HWNDNEXT); other && !starts_group(other);
         other = GetWindow(other, GW_HWNDNEXT))
        uncheck(other);
}

void click(Window& window, Button& button) {
    switch (kind_of(window)) {
        case BS_AUTOCHECKBOX:
            SendMessageW(window.handle, BM_SETCHECK, !(button.check & BST_CHECKED), 0);
            break;
        case BS_AUTO3STATE:
            SendMessageW(window.handle, BM_SETCHECK, (button.check + 1) % 3, 0);
            break;
        case BS_AUTORADIOBUTTON:
            SendMessageW(window.handle, BM_SETCHECK, BST_CHECKED, 0);
            uncheck_rest_of_group(window.handle);
            break;
        default:
            break;
    }
    if (IsWindow(window.handle)) tell_parent(window, BN_CLICKED);
}

void set_check(Window& window, Button& button, UINT check) {
    const DWORD kind = kind_of(window);
    if (!has_check(kind)) return;
    const UINT most = kind == BS_3STATE || kind == BS_AUTO3STATE ? BST_INDETERMINATE : BST_CHECKED;
    button.check = check > most ? most : check;
    // The tab key enters a group of radio buttons at the checked one.
    if (is_radio(kind)) {
        if (button.check == BST_CHECKED)
            window.style |= WS_TABSTOP;
        else
            window.style &= ~WS_TABSTOP;
    }
}

LRESULT dialog_code(DWORD kind) {
    if (kind == BS_PUSHBUTTON) return DLGC_BUTTON | DLGC_UNDEFPUSHBUTTON;
    if (kind == BS_DEFPUSHBUTTON) return DLGC_BUTTON | DLGC_DEFPUSHBUTTON;
    if (kind == BS_GROUPBOX) return DLGC_STATIC;
    return is_radio(kind) ? DLGC_BUTTON | DLGC_RADIOBUTTON : DLGC_BUTTON;
}

void press(Window& window, Button& button) {
    button.pushed = true;
    SetCapture(window.handle);
}

void release(Window& window, Button& button, bool inside) {
    if (!button.pushed) return;
    button.pushed = false;
    ReleaseCapture();
    if (inside) click(window, button);
}

bool is_inside(const Window& window, LPARAM position) {
    const SIZE size = client_size(window);
    const RECT area = {0, 0, size.cx, size.cy};
    return PtInRect(
        &area, {static_cast<std::int16_t>(LOWORD(position)), static_cast<std::int16_t>(HIWORD(position))});
}

}  // namespace

LRESULT headless::button_procedure(HWND handle, UINT message, WPARAM wParam, LPARAM lParam) {
    std::shared_ptr<Window> window = hold(handle);
    if (!window) return 0;
    if (message == WM_NCCREATE) window->state = guarded([] { return std::make_unique<Button>(); });
    auto* button = dynamic_cast<Button*>(window->state.get());
    if (!button) return DefWindowProcW(handle, message, wParam, lParam);
    switch (message) {
        case BM_GETCHECK:
            return button->check;
        case BM_SETCHECK:
            set_check(*window, *button, static_cast<UINT>(wParam));
            return 0;
        case BM_GETSTATE:
            return button->check | (button->pushed ? BST_PUSHED : 0) | (GetFocus() == handle ? BST_FOCUS : 0);
        case BM_SETSTATE:
            button->pushed = wParam != 0;
            return 0;
        case BM_SETSTYLE:
            window->style = (window->style & ~BS_TYPEMASK) | (wParam & BS_TYPEMASK);
            return 0;
        case BM_CLICK:
            SendMessageW(handle, WM_LBUTTONDOWN, 0, 0);
            SendMessageW(handle, WM_LBUTTONUP, 0, 0);
            return 0;
        case WM_LBUTTONDBLCLK:
            if (is_radio(kind_of(*window)) || (window->style & BS_NOTIFY)) {
                tell_parent(*window, BN_DOUBLECLICKED);
                return 0;
            }
            [[fallthrough]];
        case WM_LBUTTONDOWN:
            SetFocus(handle);
            if (kind_of(*window) != BS_GROUPBOX) press(*window, *button);
            return 0;
        case WM_LBUTTONUP:
            release(*window, *button, is_inside(*window, lParam));
            return 0;
        case WM_KEYDOWN:
            if (wParam == static_cast<WPARAM>(VK_SPACE)) press(*window, *button);
            return 0;
        case WM_KEYUP:
            if (wParam == static_cast<WPARAM>(VK_SPACE)) release(*window, *button, true);
            return 0;
        case WM_SETFOCUS:
            // Moving the focus onto an automatic radio button chooses it.
            if (kind_of(*window) == BS_AUTORADIOBUTTON && !button->pushed && button->check == BST_UNCHECKED &&
                wParam != 0)
                click(*window, *button);
            if (window->style & BS_NOTIFY) tell_parent(*window, BN_SETFOCUS);
            return 0;
        case WM_KILLFOCUS:
            button->pushed = false;
            if (window->style & BS_NOTIFY) tell_parent(*window, BN_KILLFOCUS);
            return 0;
        case WM_GETDLGCODE:
            return dialog_code(kind_of(*window));
        case WM_SETFONT:
            button->font = wParam;
            return 0;
        case WM_GETFONT:
            return static_cast<LRESULT>(button->font);
        default:
            return DefWindowProcW(handle, message, wParam, lParam);
    }
}

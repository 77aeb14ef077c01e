// Dialogs out of templates: the window, its font, its controls, and WM_INITDIALOG, in Windows' order.
#include "platform/headless/dialog.h"

#include <algorithm>

#include "platform/headless/guard.h"

using namespace headless;

namespace {

constexpr const char16_t* control_classes_by_number[] = {u"Button",  u"Edit",      u"Static",
                                                         u"ListBox", u"ScrollBar", u"ComboBox"};
constexpr WORD first_control_class = 0x80;

// number * multiplier / divisor, to the nearest integer.
int scaled(int number, int multiplier, int divisor) {
    const int product = number * multiplier;
    return (product + (product < 0 ? -divisor : divisor) / 2) / divisor;
}

LPCWSTR class_of(const ControlTemplate& control) {
    const WORD number = control.class_name.number;
    if (!control.class_name.text.empty()) return control.class_name.text.c_str();
    const std::size_t index = static_cast<WORD>(number - first_control_class);
    return index < std::size(control_classes_by_number) ? control_classes_by_number[index] : nullptr;
}

HFONT font_of(const DialogTemplate& dialog) {
    LOGFONTW description = {};
    constexpr int dots_per_inch = 96;
    constexpr int points_per_inch = 72;
    description.lfHeight = -scaled(dialog.point_size, dots_per_inch, points_per_inch);
    description.lfWeight = dialog.weight;
    description.lfItalic = dialog.italic;
    description.lfCharSet = dialog.charset ? dialog.charset : DEFAULT_CHARSET;
    const std::size_t length = std::min(dialog.face.size(), std::size(description.lfFaceName) - 1);
    std::copy_n(dialog.face.data(), length, description.lfFaceName);
    return CreateFontIndirectW(&description);
}

// A child lies where its template says in its parent. Another window's client area does so in its owner's, or
// on the screen, but the window stays on the screen.
POINT place_of(const DialogTemplate& dialog, const RECT& window, HWND owner, bool plain) {
    const bool child = (dialog.style & WS_CHILD) != 0;
    const SIZE size = {window.right - window.left, window.bottom - window.top};
    const SIZE screen = {GetSystemMetrics(SM_CXSCREEN), GetSystemMetrics(SM_CYSCREEN)};
    POINT place = {horizontal_units(dialog.units.left, plain), vertical_units(dialog.units.top, plain)};
    if (dialog.style & DS_CENTER) {
        place = {(screen.cx - size.cx) / 2, (screen.cy - size.cy) / 2};
    } else {
        place.x += window.left;
        place.y += window.top;
        if (!child && owner && !(dialog.style & DS_ABSALIGN)) ClientToScreen(owner, &place);
    }
    if (child) return place;
    const int border_x = GetSystemMetrics(SM_CXDLGFRAME);
    const int border_y = GetSystemMetrics(SM_CYDLGFRAME);
    place.x = std::max<LONG>(std::min<LONG>(place.x, screen.cx - size.cx - border_x), 0);
    place.y = std::max<LONG>(std::min<LONG>(place.y, screen.cy - size.cy - border_y), 0);
    return place;
}

HWND create_window(const DialogTemplate& dialog, HINSTANCE module, HWND owner, bool plain) {
    const DWORD style = (dialog.style | DS_3DLOOK) & ~WS_VISIBLE;
    DWORD extended_style = dialog.extended_style;
    if (style & DS_MODALFRAME) extended_style |= WS_EX_DLGMODALFRAME;
    if ((style & DS_CONTROL) || !(style & WS_CHILD)) extended_style |= WS_EX_CONTROLPARENT;
    RECT rect = {0, 0, horizontal_units(dialog.units.right, plain),
                 vertical_units(dialog.units.bottom, plain)};
    AdjustWindowRectEx(&rect, style, FALSE, extended_style);
    const POINT place = place_of(dialog, rect, owner, plain);
    const LPCWSTR name = dialog.class_name.text.empty() ? WC_DIALOG : dialog.class_name.text.c_str();
    return CreateWindowExW(extended_style, name, dialog.title.c_str(), style, place.x, place.y,
                           rect.right - rect.left, rect.bottom - rect.top, owner, nullptr, module, nullptr);
}

bool create_control(HWND dialog, const ControlTemplate& control, HINSTANCE module, bool plain, HFONT font) {
    DWORD style = control.style | WS_CHILD;
    DWORD extended_style = control.extended_style | WS_EX_NOPARENTNOTIFY;
    if (style & WS_BORDER) {
        style &= ~WS_BORDER;
        extended_style |= WS_EX_CLIENTEDGE;
    }
    const RECT& units = control.units;
    const HWND window =
        CreateWindowExW(extended_style, class_of(control), control.text.text.c_str(), style,
                        horizontal_units(units.left, plain), vertical_units(units.top, plain),
                        horizontal_units(units.right, plain), vertical_units(units.bottom, plain), dialog,
                        reinterpret_cast<HMENU>(static_cast<INT_PTR>(control.id)), module, nullptr);
    if (!window) return false;
    if (font) SendMessageW(window, WM_SETFONT, reinterpret_cast<WPARAM>(font), FALSE);
    if (SendMessageW(window, WM_GETDLGCODE, 0, 0) & DLGC_DEFPUSHBUTTON)
        SendMessageW(dialog, DM_SETDEFID, static_cast<WPARAM>(control.id), 0);
    return IsWindow(dialog);
}

void initialise(HWND window, const DialogTemplate& dialog, LPARAM parameter) {
    const HWND first = GetNextDlgTabItem(window, nullptr, FALSE);
    const bool wants_focus =
        SendMessageW(window, WM_INITDIALOG, reinterpret_cast<WPARAM>(first), parameter) != 0;
    const bool may_take_it = !(dialog.style & DS_CONTROL) || (dialog.style & WS_VISIBLE);
    if (wants_focus && may_take_it && IsWindow(window)) {
        // Asked again: the first control may be disabled by now.
        const HWND control = GetNextDlgTabItem(window, nullptr, FALSE);
        SetFocus(control ? control : window);
    }
    if ((dialog.style & WS_VISIBLE) && IsWindow(window)) ShowWindow(window, SW_SHOWNORMAL);
}

bool fill_dialog(HWND window, const DialogTemplate& dialog, HINSTANCE module, DLGPROC procedure,
                 LPARAM parameter) {
    const bool has_font = (dialog.style & DS_SETFONT) != 0;
    DialogState* state = dialog_state(*find_window(window));
    if (!state) return false;
    state->plain_units = !has_font;
    state->font = has_font ? font_of(dialog) : nullptr;
    if (has_font && !state->font) return false;
    const HFONT font = state->font;
    SetWindowLongPtrW(window, DWLP_DLGPROC, reinterpret_cast<LONG_PTR>(procedure));
    if (font) SendMessageW(window, WM_SETFONT, reinterpret_cast<WPARAM>(font), FALSE);
    for (const ControlTemplate& control : dialog.controls)
        if (!create_control(window, control, module, !has_font, font)) return false;
    initialise(window, dialog, parameter);
    return true;
}

}  // namespace

namespace headless {

int horizontal_units(int units, bool plain) {
    constexpr int system_width = 8;
    constexpr int dialog_width = 6;
    return scaled(units, plain ? system_width : dialog_width, 4);
}

int vertical_units(int units, bool plain) {
    constexpr int system_height = 16;
    constexpr int dialog_height = 13;
    return scaled(units, plain ? system_height : dialog_height, 8);
}

std::optional<DialogTemplate> load_dialog_template(HMODULE module, LPCWSTR name) {
    const HRSRC resource = FindResourceW(module, name, RT_DIALOG);
    if (!resource) return std::nullopt;
    const auto* bytes = static_cast<const std::uint8_t*>(LockResource(LoadResource(module, resource)));
    if (!bytes) return std::nullopt;
    std::optional<DialogTemplate> dialog = read_dialog_template({bytes, SizeofResource(module, resource)});
    if (!dialog) SetLastError(ERROR_RESOURCE_DATA_NOT_FOUND);
    return dialog;
}

HWND create_dialog(const DialogTemplate& dialog, HINSTANCE module, HWND owner, DLGPROC procedure,
                   LPARAM parameter) {
    const HWND window = create_window(dialog, module, owner, !(dialog.style & DS_SETFONT));
    if (!window) return nullptr;
    const bool complete = guarded([&] { return fill_dialog(window, dialog, module, procedure, parameter); });
    if (complete) return IsWindow(window) ? window : nullptr;
    const DWORD error = GetLastError();
    if (IsWindow(window)) DestroyWindow(window);
    return fails(error);
}

}  // namespace headless

HWND CreateDialogParamW(HINSTANCE module, LPCWSTR name, HWND owner, DLGPROC procedure, LPARAM parameter) {
    return guarded([&]() -> HWND {
        const std::optional<DialogTemplate> dialog = load_dialog_template(module, name);
        if (!dialog) return nullptr;
        return create_dialog(*dialog, module, owner, procedure, parameter);
    });
}

BOOL MapDialogRect(HWND dialog, RECT* rect) {
    Window* window = find_window(dialog);
    const DialogState* state = window ? dialog_state(*window) : nullptr;
    if (!state) return FALSE;
    return SetRect(
        rect, horizontal_units(rect->left, state->plain_units), vertical_units(rect->top, state->plain_units),
        horizontal_units(rect->right, state->plain_units), vertical_units(rect->bottom, state->plain_units));
}

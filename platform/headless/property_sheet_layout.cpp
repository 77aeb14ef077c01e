// Where things lie in a property sheet.
#include <algorithm>

#include "platform/headless/include/commctrl.h"
#include "platform/headless/property_sheet.h"

namespace headless {

namespace {

constexpr int tab_control_id = 0x3020;
constexpr int help_id = 9;
constexpr int gap_units = 4;  // between everything

ControlTemplate button(int id, const char16_t* text, int left, DWORD style) {
    return {style | WS_VISIBLE | WS_TABSTOP, 0, {left, 122, 50, 14}, id, {0x80, {}}, {0, text}};
}

SIZE size_of(HWND window) {
    RECT rect = {};
    GetWindowRect(window, &rect);
    return {rect.right - rect.left, rect.bottom - rect.top};
}

void resize(HWND window, int width, int height) {
    SetWindowPos(window, nullptr, 0, 0, width, height, SWP_NOMOVE | SWP_NOZORDER | SWP_NOACTIVATE);
}

// The tabs become as large as the largest page needs, and the sheet's client area has them, the buttons and
// gaps. Rows are counted before the tabs are widened: fewer may be left afterwards.
void fit_to_pages(HWND window, const Sheet& sheet, SIZE gap) {
    RECT page = {};
    for (const auto& entry : sheet.pages) {
        page.right = std::max(page.right, entry->dialog.units.right);
        page.bottom = std::max(page.bottom, entry->dialog.units.bottom);
    }
    MapDialogRect(window, &page);
    const HWND tabs = tabs_of_sheet(window);
    SendMessageW(tabs, TCM_ADJUSTRECT, TRUE, reinterpret_cast<LPARAM>(&page));
    resize(tabs, page.right - page.left, page.bottom - page.top);
    const SIZE outer = size_of(tabs);
    RECT frame = {0, 0, outer.cx + 2 * gap.cx, outer.cy + 3 * gap.cy + size_of(GetDlgItem(window, IDOK)).cy};
    AdjustWindowRectEx(&frame, static_cast<DWORD>(GetWindowLongW(window, GWL_STYLE)), FALSE,
                       static_cast<DWORD>(GetWindowLongW(window, GWL_EXSTYLE)));
    resize(window, frame.right - frame.left, frame.bottom - frame.top);
}

// Buttons stand at the right; one that the sheet does not have is hidden where the next one would be.
void place_buttons(HWND window, const Sheet& sheet, SIZE gap) {
    RECT client = {};
    GetClientRect(window, &client);
    const SIZE size = size_of(GetDlgItem(window, IDOK));
    const bool apply = !(sheet.flags & PSH_NOAPPLYNOW);
    const bool help = (sheet.flags & PSH_HASHELP) != 0;
    const int count = 2 + apply + help;
    int left = client.right - count * (size.cx + gap.cx);
    const int top = client.bottom - gap.cy - size.cy;
    const auto place = [&](int id, bool shown) {
        const HWND control = GetDlgItem(window, id);
        SetWindowPos(control, nullptr, left, top, 0, 0, SWP_NOSIZE | SWP_NOZORDER | SWP_NOACTIVATE);
        if (!shown) ShowWindow(control, SW_HIDE);
        if (!shown || id == ID_APPLY_NOW) EnableWindow(control, FALSE);
        if (shown) left += size.cx + gap.cx;
    };
    place(IDOK, true);
    place(IDCANCEL, true);
    if (!apply) left -= size.cx + gap.cx;
    place(ID_APPLY_NOW, apply);
    if (!apply) left += size.cx + gap.cx;
    place(help_id, help);
}

}  // namespace

DialogTemplate sheet_template() {
    DialogTemplate dialog;
    dialog.style = WS_POPUP | WS_CAPTION | WS_SYSMENU | DS_MODALFRAME | DS_CONTEXTHELP | DS_SETFONT;
    dialog.units = {0, 0, 220, 140};
    dialog.point_size = 8;
    dialog.face = u"MS Shell Dlg";
    dialog.controls = {
        button(IDOK, u"OK", 4, BS_DEFPUSHBUTTON | WS_GROUP),
        button(IDCANCEL, u"Cancel", 58, BS_PUSHBUTTON),
        button(ID_APPLY_NOW, u"&Apply", 112, BS_PUSHBUTTON | WS_DISABLED),
        button(help_id, u"Help", 166, BS_PUSHBUTTON | WS_GROUP),
        {WS_VISIBLE | WS_TABSTOP | WS_GROUP | WS_CLIPSIBLINGS | TCS_MULTILINE,
         0,
         {4, 4, 212, 114},
         tab_control_id,
         {0, u"SysTabControl32"},
         {}},
    };
    return dialog;
}

HWND tabs_of_sheet(HWND window) {
    return GetDlgItem(window, tab_control_id);
}

RECT page_area(HWND window) {
    const HWND tabs = tabs_of_sheet(window);
    RECT area = {};
    GetClientRect(tabs, &area);
    SendMessageW(tabs, TCM_ADJUSTRECT, FALSE, reinterpret_cast<LPARAM>(&area));
    MapWindowPoints(tabs, window, reinterpret_cast<POINT*>(&area), 2);
    return area;
}

void build_sheet(HWND window, const Sheet& sheet) {
    for (std::size_t i = 0; i < sheet.pages.size(); ++i) {
        TCITEMW tab = {};
        tab.mask = TCIF_TEXT;
        tab.pszText = sheet.pages[i]->title.data();
        SendMessageW(tabs_of_sheet(window), TCM_INSERTITEMW, i, reinterpret_cast<LPARAM>(&tab));
    }
    RECT gap = {0, 0, gap_units, gap_units};
    MapDialogRect(window, &gap);
    fit_to_pages(window, sheet, {gap.right, gap.bottom});
    place_buttons(window, sheet, {gap.right, gap.bottom});
}

}  // namespace headless

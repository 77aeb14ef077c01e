// Property sheets: pages come and go, and are told so.
#include "platform/headless/property_sheet.h"

#include <algorithm>

#include "platform/headless/guard.h"
#include "platform/headless/include/commctrl.h"

using namespace headless;

namespace {

// Held while a page is told something: it may destroy the sheet. Null for a window without sheet.
std::shared_ptr<Sheet> sheet_of(HWND window) {
    const auto* kept = reinterpret_cast<std::shared_ptr<Sheet>*>(GetWindowLongPtrW(window, DWLP_USER));
    return kept ? *kept : nullptr;
}

UINT call_back(SheetPage& page, UINT reason) {
    if (!(page.record.dwFlags & PSP_USECALLBACK) || !page.record.pfnCallback) return TRUE;
    return page.record.pfnCallback(nullptr, reason, &page.record);
}

LRESULT tell(HWND window, const SheetPage& page, UINT code, LPARAM parameter = 0) {
    if (!page.window) return 0;
    PSHNOTIFY notice = {{window, 0, code}, parameter};
    return SendMessageW(page.window, WM_NOTIFY, 0, reinterpret_cast<LPARAM>(&notice));
}

SheetPage* active_page(const Sheet& sheet) {
    return sheet.active < 0 ? nullptr : sheet.pages[static_cast<std::size_t>(sheet.active)].get();
}

// --- pages ---

bool create_page(HWND window, SheetPage& page) {
    if (!call_back(page, PSPCB_CREATE)) return false;
    DialogTemplate dialog = page.dialog;
    constexpr DWORD foreign = WS_POPUP | WS_CAPTION | WS_SYSMENU | WS_THICKFRAME | WS_DISABLED | WS_VISIBLE |
                              WS_MINIMIZE | WS_MAXIMIZE | DS_MODALFRAME;
    dialog.style = (dialog.style & ~foreign) | WS_CHILD | WS_TABSTOP | DS_CONTROL;
    dialog.units.left = dialog.units.top = 0;
    const HWND made = create_dialog(dialog, page.record.hInstance, window, page.record.pfnDlgProc,
                                    reinterpret_cast<LPARAM>(&page.record));
    if (!made || !IsWindow(window)) return false;
    page.window = made;
    return true;
}

void put_in_place(HWND window, const SheetPage& page) {
    const RECT area = page_area(window);
    SetWindowPos(page.window, HWND_TOP, area.left, area.top, area.right - area.left, area.bottom - area.top,
                 SWP_NOACTIVATE);
}

// The page that is shown in place of one that cannot be: the next, or the last. -1 when there is none.
int remove_page(HWND window, Sheet& sheet, int index) {
    call_back(*sheet.pages[static_cast<std::size_t>(index)], PSPCB_RELEASE);
    sheet.pages.erase(sheet.pages.begin() + index);
    SendMessageW(tabs_of_sheet(window), TCM_DELETEITEM, static_cast<WPARAM>(index), 0);
    return std::min(index, static_cast<int>(sheet.pages.size()) - 1);
}

bool show_page(HWND window, Sheet& sheet, int index) {
    if (index < 0 || index >= static_cast<int>(sheet.pages.size())) return false;
    if (const SheetPage* before = active_page(sheet)) ShowWindow(before->window, SW_HIDE);
    sheet.active = -1;
    while (IsWindow(window) && index >= 0) {
        SheetPage& page = *sheet.pages[static_cast<std::size_t>(index)];
        if (page.window || guarded([&] { return create_page(window, page); })) break;
        if (IsWindow(window)) index = remove_page(window, sheet, index);
    }
    if (!IsWindow(window) || index < 0) return false;
    sheet.active = index;
    const SheetPage& page = *active_page(sheet);
    put_in_place(window, page);
    tell(window, page, PSN_SETACTIVE);
    if (!IsWindow(page.window)) return false;
    ShowWindow(page.window, SW_SHOW);
    SendMessageW(tabs_of_sheet(window), TCM_SETCURSEL, static_cast<WPARAM>(index), 0);
    return true;
}

bool may_leave(HWND window, const Sheet& sheet) {
    const SheetPage* page = active_page(sheet);
    return !page || !tell(window, *page, PSN_KILLACTIVE);
}

// --- buttons ---

// Pages that were never shown have nothing to apply or to forget.
bool apply(HWND window, const Sheet& sheet, bool by_ok) {
    if (!may_leave(window, sheet)) return false;
    for (std::size_t i = 0; i < sheet.pages.size() && IsWindow(window); ++i) {
        const LRESULT answer = tell(window, *sheet.pages[i], PSN_APPLY, by_ok);
        if (answer == PSNRET_INVALID || answer == PSNRET_INVALID_NOCHANGEPAGE) return false;
    }
    if (!by_ok && IsWindow(window))
        if (const SheetPage* page = active_page(sheet)) tell(window, *page, PSN_SETACTIVE);
    return true;
}

void cancel(HWND window, Sheet& sheet, bool by_close) {
    const SheetPage* page = active_page(sheet);
    if (page && tell(window, *page, PSN_QUERYCANCEL)) return;
    for (std::size_t i = 0; i < sheet.pages.size() && IsWindow(window); ++i)
        tell(window, *sheet.pages[i], PSN_RESET, by_close);
    sheet.over = true;
}

bool command(HWND window, Sheet& sheet, int id) {
    if (id == IDOK) {
        if (apply(window, sheet, true)) sheet.over = true;
    } else if (id == ID_APPLY_NOW) {
        if (apply(window, sheet, false)) EnableWindow(GetDlgItem(window, ID_APPLY_NOW), FALSE);
    } else if (id == IDCANCEL) {
        cancel(window, sheet, false);
    } else {
        return false;
    }
    return true;
}

bool press_button(HWND window, Sheet& sheet, WPARAM button) {
    if (button == static_cast<WPARAM>(PSBTN_OK)) return command(window, sheet, IDOK);
    if (button == static_cast<WPARAM>(PSBTN_CANCEL)) return command(window, sheet, IDCANCEL);
    return button == static_cast<WPARAM>(PSBTN_APPLYNOW) && command(window, sheet, ID_APPLY_NOW);
}

// --- the sheet's window ---

void initialise(HWND window, std::shared_ptr<Sheet>* kept) {
    SetWindowLongPtrW(window, DWLP_USER, reinterpret_cast<LONG_PTR>(kept));
    const std::shared_ptr<Sheet> sheet = *kept;
    build_sheet(window, *sheet);
    SetWindowTextW(window, sheet->caption.c_str());
    if (!show_page(window, *sheet, static_cast<int>(sheet->first))) return;
    if (const HWND control = GetNextDlgTabItem(active_page(*sheet)->window, nullptr, FALSE))
        SetFocus(control);
}

void forget(HWND window) {
    const std::shared_ptr<Sheet> sheet = sheet_of(window);
    if (!sheet) return;
    delete reinterpret_cast<std::shared_ptr<Sheet>*>(SetWindowLongPtrW(window, DWLP_USER, 0));
    for (const auto& page : sheet->pages) call_back(*page, PSPCB_RELEASE);
}

LRESULT tab_notice(HWND window, Sheet& sheet, const NMHDR& header) {
    const HWND tabs = tabs_of_sheet(window);
    if (header.hwndFrom != tabs) return 0;
    if (header.code == TCN_SELCHANGING) return !may_leave(window, sheet);
    if (header.code == TCN_SELCHANGE)
        show_page(window, sheet, static_cast<int>(SendMessageW(tabs, TCM_GETCURSEL, 0, 0)));
    return 0;
}

int index_of(const Sheet& sheet, HWND page) {
    for (std::size_t i = 0; i < sheet.pages.size(); ++i)
        if (page && sheet.pages[i]->window == page) return static_cast<int>(i);
    return -1;
}

// What the message is answered with; nothing for one that the sheet leaves alone.
std::optional<LRESULT> answer_to(HWND window, Sheet& sheet, UINT message, WPARAM wParam, LPARAM lParam) {
    switch (message) {
        case WM_COMMAND:
            if (!command(window, sheet, LOWORD(wParam))) return std::nullopt;
            return 0;
        case WM_NOTIFY:
            return tab_notice(window, sheet, *reinterpret_cast<const NMHDR*>(lParam));
        case WM_CLOSE:
            cancel(window, sheet, true);
            return 0;
        case PSM_GETCURRENTPAGEHWND: {
            const SheetPage* page = sheet.over ? nullptr : active_page(sheet);
            return page ? reinterpret_cast<LRESULT>(page->window) : 0;
        }
        case PSM_GETTABCONTROL:
            return reinterpret_cast<LRESULT>(tabs_of_sheet(window));
        case PSM_SETCURSEL:
            return may_leave(window, sheet) && show_page(window, sheet, static_cast<int>(wParam));
        case PSM_HWNDTOINDEX:
            return index_of(sheet, reinterpret_cast<HWND>(wParam));
        case PSM_PRESSBUTTON:
            return press_button(window, sheet, wParam);
        case PSM_CHANGED:
        case PSM_UNCHANGED:
            if (!(sheet.flags & PSH_NOAPPLYNOW))
                EnableWindow(GetDlgItem(window, ID_APPLY_NOW), message == PSM_CHANGED);
            return TRUE;
        case PSM_ISDIALOGMESSAGE:
            return IsDialogMessageW(window, reinterpret_cast<MSG*>(lParam));
        default:
            return std::nullopt;
    }
}

INT_PTR sheet_procedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    if (message == WM_INITDIALOG) {
        // Whoever creates the window gives its sheet away.
        auto& given = *reinterpret_cast<std::unique_ptr<std::shared_ptr<Sheet>>*>(lParam);
        initialise(window, given.release());
        return FALSE;
    }
    const std::shared_ptr<Sheet> sheet = sheet_of(window);
    if (!sheet) return FALSE;
    if (message == WM_NCDESTROY) {
        forget(window);
        return FALSE;
    }
    const std::optional<LRESULT> answer = answer_to(window, *sheet, message, wParam, lParam);
    if (!answer) return FALSE;
    if (IsWindow(window)) SetWindowLongPtrW(window, DWLP_MSGRESULT, *answer);
    return TRUE;
}

std::u16string text_or_resource(HINSTANCE module, LPCWSTR text) {
    if (!text) return {};
    if (!IS_INTRESOURCE(text)) return text;
    WCHAR buffer[256];
    const int length = LoadStringW(module, static_cast<UINT>(reinterpret_cast<ULONG_PTR>(text)), buffer, 256);
    return {buffer, static_cast<std::size_t>(length)};
}

// A page whose template is missing or damaged is no page.
void add_page(Sheet& sheet, const PROPSHEETPAGEW& record) {
    auto page = std::make_unique<SheetPage>();
    page->record = record;
    std::optional<DialogTemplate> dialog = load_dialog_template(record.hInstance, record.pszTemplate);
    if (!dialog) return;
    page->dialog = std::move(*dialog);
    page->title = record.dwFlags & PSP_USETITLE ? text_or_resource(record.hInstance, record.pszTitle)
                                                : page->dialog.title;
    call_back(*page, PSPCB_ADDREF);
    sheet.pages.push_back(std::move(page));
}

}  // namespace

INT_PTR PropertySheetW(const PROPSHEETHEADERW* header) {
    if (!header || !(header->dwFlags & PSH_PROPSHEETPAGE) || !(header->dwFlags & PSH_MODELESS))
        return fails(ERROR_INVALID_PARAMETER);
    return guarded([&]() -> INT_PTR {
        auto given = std::make_unique<std::shared_ptr<Sheet>>(std::make_shared<Sheet>());
        Sheet& sheet = **given;
        sheet.flags = header->dwFlags;
        sheet.caption = text_or_resource(header->hInstance, header->pszCaption);
        for (UINT i = 0; i < header->nPages; ++i) add_page(sheet, header->ppsp[i]);
        if (sheet.pages.empty()) return 0;
        sheet.first = header->nStartPage < sheet.pages.size() ? header->nStartPage : 0;
        const HWND window = create_dialog(sheet_template(), header->hInstance, header->hwndParent,
                                          sheet_procedure, reinterpret_cast<LPARAM>(&given));
        if (!window) return 0;
        ShowWindow(window, SW_SHOW);
        return IsWindow(window) ? reinterpret_cast<INT_PTR>(window) : 0;
    });
}

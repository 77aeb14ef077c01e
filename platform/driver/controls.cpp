#include "platform/driver/controls.h"

namespace driver {

namespace {

constexpr std::size_t kLongestClassName = 256;

HTREEITEM relative(HWND tree, HTREEITEM item, UINT relation) {
    return reinterpret_cast<HTREEITEM>(
        SendMessageW(tree, TVM_GETNEXTITEM, relation, reinterpret_cast<LPARAM>(item)));
}

BOOL CALLBACK collect(HWND window, LPARAM list) {
    if (IsWindowVisible(window) && classOf(window) != "#32770")
        reinterpret_cast<std::vector<HWND>*>(list)->push_back(window);
    return TRUE;
}

LONG_PTR buttonKind(HWND control) {
    return GetWindowLongPtrW(control, GWL_STYLE) & static_cast<LONG_PTR>(BS_TYPEMASK);
}

}  // namespace

std::string toUtf8(std::basic_string_view<WCHAR> text) {
    const int length = static_cast<int>(text.size());
    if (length == 0) return {};
    const int size = WideCharToMultiByte(CP_UTF8, 0, text.data(), length, nullptr, 0, nullptr, nullptr);
    std::string converted(static_cast<std::size_t>(size), '\0');
    WideCharToMultiByte(CP_UTF8, 0, text.data(), length, converted.data(), size, nullptr, nullptr);
    return converted;
}

std::string textOf(HWND window) {
    std::basic_string<WCHAR> text(static_cast<std::size_t>(GetWindowTextLengthW(window)) + 1, WCHAR());
    const int length = GetWindowTextW(window, text.data(), static_cast<int>(text.size()));
    return toUtf8({text.data(), static_cast<std::size_t>(length)});
}

std::string classOf(HWND window) {
    WCHAR name[kLongestClassName];
    return toUtf8({name, static_cast<std::size_t>(GetClassNameW(window, name, kLongestClassName))});
}

std::string captionOf(HWND window) {
    const std::string text = textOf(window);
    std::string caption;
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (text[i] == '&' && ++i == text.size()) break;
        caption += text[i];
    }
    return caption;
}

std::vector<HWND> visibleControls(HWND dialog) {
    std::vector<HWND> controls;
    EnumChildWindows(dialog, collect, reinterpret_cast<LPARAM>(&controls));
    return controls;
}

HWND visibleTree(HWND dialog) {
    for (HWND control : visibleControls(dialog))
        if (classOf(control) == "SysTreeView32") return control;
    return nullptr;
}

bool isButton(HWND control) {
    return classOf(control) == "Button" && buttonKind(control) != static_cast<LONG_PTR>(BS_GROUPBOX);
}

bool isCheckBox(HWND control) {
    if (classOf(control) != "Button") return false;
    const LONG_PTR kind = buttonKind(control);
    return kind == static_cast<LONG_PTR>(BS_CHECKBOX) || kind == static_cast<LONG_PTR>(BS_AUTOCHECKBOX) ||
           kind == static_cast<LONG_PTR>(BS_3STATE) || kind == static_cast<LONG_PTR>(BS_AUTO3STATE);
}

HWND tabsOf(HWND dialog) {
    for (HWND control : visibleControls(dialog))
        if (classOf(control) == "SysTabControl32") return control;
    return nullptr;
}

std::vector<std::string> titlesOf(HWND tabs) {
    std::vector<std::string> titles;
    const auto count = static_cast<int>(SendMessageW(tabs, TCM_GETITEMCOUNT, 0, 0));
    for (int i = 0; i < count; ++i) {
        WCHAR text[256] = {};
        TCITEMW tab = {};
        tab.mask = TCIF_TEXT;
        tab.pszText = text;
        tab.cchTextMax = 256;
        SendMessageW(tabs, TCM_GETITEMW, static_cast<WPARAM>(i), reinterpret_cast<LPARAM>(&tab));
        titles.push_back(toUtf8(tab.pszText ? tab.pszText : text));
    }
    return titles;
}

std::string textOf(HWND tree, HTREEITEM item) {
    // The message cuts without a word: a text that fills the buffer may be longer.
    for (std::size_t size = 256;; size *= 2) {
        std::basic_string<WCHAR> text(size, WCHAR());
        TVITEMW record = {};
        record.mask = TVIF_TEXT;
        record.hItem = item;
        record.pszText = text.data();
        record.cchTextMax = static_cast<int>(size);
        if (!SendMessageW(tree, TVM_GETITEMW, 0, reinterpret_cast<LPARAM>(&record))) return {};
        const std::basic_string_view<WCHAR> answer = record.pszText;
        if (answer.size() + 1 < size) return toUtf8(answer);
    }
}

HTREEITEM firstItem(HWND tree) {
    return relative(tree, nullptr, TVGN_ROOT);
}

HTREEITEM firstChild(HWND tree, HTREEITEM item) {
    return relative(tree, item, TVGN_CHILD);
}

HTREEITEM nextSibling(HWND tree, HTREEITEM item) {
    return relative(tree, item, TVGN_NEXT);
}

UINT stateOf(HWND tree, HTREEITEM item, UINT mask) {
    return static_cast<UINT>(
        SendMessageW(tree, TVM_GETITEMSTATE, reinterpret_cast<WPARAM>(item), static_cast<LPARAM>(mask)));
}

int checkOf(HWND tree, HTREEITEM item) {
    return static_cast<int>(stateOf(tree, item, TVIS_STATEIMAGEMASK) >> 12) & 0xF;
}

}  // namespace driver

#include "tests/platform_ui/user.h"

#include <cstring>

namespace user {

namespace {

LPARAM position(POINT point) {
    return MAKELPARAM(point.x, point.y);
}

}  // namespace

void settle() {
    MSG message;
    while (PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE)) {
        TranslateMessage(&message);
        DispatchMessageW(&message);
    }
}

std::optional<POINT> find_part(HWND tree, HTREEITEM item, UINT part) {
    RECT row;
    std::memcpy(&row, &item, sizeof(item));
    if (!SendMessageW(tree, TVM_GETITEMRECT, FALSE, reinterpret_cast<LPARAM>(&row))) return {};
    RECT client;
    GetClientRect(tree, &client);
    TVHITTESTINFO test = {};
    test.pt.y = (row.top + row.bottom) / 2;
    for (test.pt.x = 0; test.pt.x < client.right; ++test.pt.x) {
        SendMessageW(tree, TVM_HITTEST, 0, reinterpret_cast<LPARAM>(&test));
        if (test.hItem == item && test.flags == part) return test.pt;
    }
    return {};
}

void click(HWND window, POINT point) {
    PostMessageW(window, WM_LBUTTONDOWN, MK_LBUTTON, position(point));
    PostMessageW(window, WM_LBUTTONUP, 0, position(point));
    settle();
}

bool click(HWND tree, HTREEITEM item, UINT part) {
    const std::optional<POINT> point = find_part(tree, item, part);
    if (point) click(tree, *point);
    return point.has_value();
}

bool double_click(HWND tree, HTREEITEM item, UINT part) {
    const std::optional<POINT> point = find_part(tree, item, part);
    if (!point) return false;
    PostMessageW(tree, WM_LBUTTONDOWN, MK_LBUTTON, position(*point));
    PostMessageW(tree, WM_LBUTTONUP, 0, position(*point));
    PostMessageW(tree, WM_LBUTTONDBLCLK, MK_LBUTTON, position(*point));
    PostMessageW(tree, WM_LBUTTONUP, 0, position(*point));
    settle();
    return true;
}

void press(HWND window, int key) {
    PostMessageW(window, WM_KEYDOWN, static_cast<WPARAM>(key), 1);
    PostMessageW(window, WM_KEYUP, static_cast<WPARAM>(key), 1);
    settle();
}

}  // namespace user

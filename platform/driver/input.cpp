#include "platform/driver/input.h"

#include <cstring>

#include "platform/afx/modal_loop.h"

namespace driver {

namespace {

LPARAM position(POINT point) {
    return MAKELPARAM(point.x, point.y);
}

void postClick(HWND window, POINT point, UINT down) {
    PostMessageW(window, down, MK_LBUTTON, position(point));
    PostMessageW(window, WM_LBUTTONUP, 0, position(point));
}

}  // namespace

void settle() {
    AfxHandleMessages();
}

std::optional<POINT> findPart(HWND tree, HTREEITEM item, UINT part) {
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
    postClick(window, point, WM_LBUTTONDOWN);
    settle();
}

bool click(HWND tree, HTREEITEM item, UINT part) {
    const std::optional<POINT> point = findPart(tree, item, part);
    if (point) click(tree, *point);
    return point.has_value();
}

bool doubleClick(HWND tree, HTREEITEM item, UINT part) {
    const std::optional<POINT> point = findPart(tree, item, part);
    if (!point) return false;
    postClick(tree, *point, WM_LBUTTONDOWN);
    postClick(tree, *point, WM_LBUTTONDBLCLK);
    settle();
    return true;
}

void pressKey(HWND window, int key) {
    PostMessageW(window, WM_KEYDOWN, static_cast<WPARAM>(key), 1);
    PostMessageW(window, WM_KEYUP, static_cast<WPARAM>(key), 1);
    settle();
}

}  // namespace driver

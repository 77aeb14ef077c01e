#include "tests/platform_ui/user.h"

#include "platform/driver/input.h"

namespace user {

void settle() {
    driver::settle();
}

std::optional<POINT> find_part(HWND tree, HTREEITEM item, UINT part) {
    return driver::findPart(tree, item, part);
}

bool click(HWND tree, HTREEITEM item, UINT part) {
    return driver::click(tree, item, part);
}

bool double_click(HWND tree, HTREEITEM item, UINT part) {
    return driver::doubleClick(tree, item, part);
}

void click(HWND window, POINT point) {
    driver::click(window, point);
}

void press(HWND window, int key) {
    driver::pressKey(window, key);
}

}  // namespace user

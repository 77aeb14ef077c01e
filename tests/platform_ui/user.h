// Acts on windows as a user does: the driver's input (platform/driver/input.h) under the names of these tests.
//
//     user::click(tree, item, TVHT_ONITEMBUTTON);  // the button in front of the item
//     user::press(tree, VK_DOWN);
//
// Every action returns once nothing is left to do: all messages are handled, headless and on Windows.
#pragma once

#include <optional>

#include "platform/winapi.h"

namespace user {

// Handles messages until there are none.
void settle();

// A point within a part of an item (one of the TVHT_ flags), found by asking the tree; nothing when the part
// is not in the window.
std::optional<POINT> find_part(HWND tree, HTREEITEM item, UINT part);

// False when the part cannot be seen.
bool click(HWND tree, HTREEITEM item, UINT part);
// Two clicks in quick succession.
bool double_click(HWND tree, HTREEITEM item, UINT part);

void click(HWND window, POINT point);
void press(HWND window, int key);

}  // namespace user

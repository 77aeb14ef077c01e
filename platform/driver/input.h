// Input as a user gives it, through posted messages; never the real mouse.
//
//     driver::click(tree, item, TVHT_ONITEMBUTTON);  // the button in front of the item
//     driver::pressKey(tree, VK_DOWN);
//
// Every action returns once nothing is left to do: all messages are handled, headless and on Windows. What
// leaves a handler meanwhile is raised here.
#pragma once

#include <optional>

#include "platform/winapi.h"

namespace driver {

// Handles messages until there are none.
void settle();

// A point within a part of an item (one of the TVHT_ flags), found by asking the tree; nothing when the part
// is not in the window.
std::optional<POINT> findPart(HWND tree, HTREEITEM item, UINT part);

// False when the part cannot be seen.
bool click(HWND tree, HTREEITEM item, UINT part);
// Two clicks in quick succession.
bool doubleClick(HWND tree, HTREEITEM item, UINT part);

void click(HWND window, POINT point);
void pressKey(HWND window, int key);

}  // namespace driver

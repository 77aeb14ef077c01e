// Reading controls. Texts are UTF-8.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "platform/winapi.h"

namespace driver {

std::string toUtf8(std::basic_string_view<WCHAR> text);
std::string textOf(HWND window);
std::string classOf(HWND window);
// What a user reads: without the "&" in front of a key, "&&" being one.
std::string captionOf(HWND window);

// All windows within that can be seen, each before what is in it; without the dialogs of pages themselves.
std::vector<HWND> visibleControls(HWND dialog);
// Null when there is none to be seen.
HWND visibleTree(HWND dialog);
bool isCheckBox(HWND control);
bool isButton(HWND control);

// Of a sheet; null for a dialog without pages.
HWND tabsOf(HWND dialog);
std::vector<std::string> titlesOf(HWND tabs);

std::string textOf(HWND tree, HTREEITEM item);
HTREEITEM firstItem(HWND tree);
HTREEITEM firstChild(HWND tree, HTREEITEM item);
HTREEITEM nextSibling(HWND tree, HTREEITEM item);
UINT stateOf(HWND tree, HTREEITEM item, UINT mask);
// The number of the item's state picture.
int checkOf(HWND tree, HTREEITEM item);

}  // namespace driver

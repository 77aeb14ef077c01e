// Property sheets: what their windows keep.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "platform/headless/dialog.h"
#include "platform/headless/include/winapi/property_sheet.h"

namespace headless {

struct SheetPage {
    PROPSHEETPAGEW record = {};
    DialogTemplate dialog;
    std::u16string title;
    HWND window = nullptr;  // once it was shown
};

struct Sheet {
    DWORD flags = 0;
    std::u16string caption;
    std::vector<std::unique_ptr<SheetPage>> pages;
    std::size_t first = 0;
    int active = -1;
    bool over = false;  // OK or Cancel was pressed
};

// The sheet's tabs, buttons and size around the largest page, for its window.
void build_sheet(HWND window, const Sheet& sheet);
// Where pages lie in the sheet's client area.
RECT page_area(HWND window);
HWND tabs_of_sheet(HWND window);

// The window of a sheet: without the size that its pages need.
DialogTemplate sheet_template();

}  // namespace headless

#include "platform/headless/controls.h"

LRESULT headless::tab_procedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    return DefWindowProcW(window, message, wParam, lParam);
}

// The window classes that exist from the start.
#pragma once

#include "platform/headless/include/windows.h"

namespace headless {

LRESULT button_procedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam);
LRESULT static_procedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam);
LRESULT tab_procedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam);
LRESULT tree_procedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam);

struct ControlClass {
    const char16_t* name;
    WNDPROC procedure;
    int extra_bytes = 0;
    ATOM atom = 0;  // 0: the next one
};

// Spelled as Windows spells them: GetClassNameW answers this, whatever a template says.
inline constexpr ControlClass control_classes[] = {
    {u"Button", button_procedure},
    {u"Static", static_procedure},
    {u"#32770", DefDlgProcW, DLGWINDOWEXTRA, 0x8002},
    {u"SysTabControl32", tab_procedure},
    {u"SysTreeView32", tree_procedure},
};

}  // namespace headless

// Dialogs as windows.
#pragma once

#include "platform/headless/desk.h"
#include "platform/headless/dialog_template.h"

namespace headless {

// What DefDlgProcW keeps for a dialog.
struct DialogState : ControlState {
    HFONT font = nullptr;  // the dialog's own
    WPARAM shown_font = 0;
    int default_id = 0;
    HWND focus = nullptr;  // when the dialog was left
    bool plain_units = false;
};

// Null for a window of another kind.
DialogState* dialog_state(Window& window);

// Of a module's resources. None and a last error when there is no such template, or a damaged one.
std::optional<DialogTemplate> load_dialog_template(HMODULE module, LPCWSTR name);

HWND create_dialog(const DialogTemplate& dialog, HINSTANCE module, HWND owner, DLGPROC procedure,
                   LPARAM parameter);

// Pixels of a width and a height in dialog units.
int horizontal_units(int units, bool plain);
int vertical_units(int units, bool plain);

}  // namespace headless

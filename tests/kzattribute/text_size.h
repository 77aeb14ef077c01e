// How much room a text takes in a dialog's font.
#pragma once

#include <string>

#include "platform/winapi.h"

namespace test {

// In pixels, of a text in the font of a dialog's control. Off Windows, where dialogs have no font, that of the
// tests' own fonts at the size of the dialog's, which are wider than most.
SIZE textSize(HWND control, const std::basic_string<WCHAR>& text);

}  // namespace test

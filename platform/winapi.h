// The only door to the Windows API: the real headers on Windows, the headless subset elsewhere.
//
// Nobody else includes <windows.h>. The build decides which one is found, so no header of ours asks for the
// platform. The macros that rename plain words to their A or W forms are taken away: the project calls the
// W functions by name, and methods such as CWnd::SendMessage keep their names.
#pragma once

#include <windows.h>

#include <commctrl.h>
#include <tchar.h>

#undef CreateDC
#undef CreateDialog
#undef CreateFont
#undef CreateWindow
#undef DialogBox
#undef DrawText
#undef FindResource
#undef FindWindow
#undef GetClassName
#undef GetMessage
#undef GetObject
#undef GetProp
#undef LoadBitmap
#undef LoadImage
#undef LoadLibrary
#undef LoadString
#undef MessageBox
#undef PostMessage
#undef PropertySheet
#undef SendMessage
#undef SetProp

// The wide character of the Windows API: 16 bits on both builds.
static_assert(sizeof(WCHAR) == 2);

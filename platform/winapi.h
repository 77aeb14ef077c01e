// The only door to the Windows API: the real headers on Windows, the headless subset elsewhere.
//
// Nobody else includes <windows.h>. The build decides which one is found, so no header of ours asks for the
// platform. The macros that rename plain words to their A or W forms are taken away: the project calls the
// W functions by name, and methods such as CWnd::SendMessage keep their names.
#pragma once

#include <windows.h>

#include <commctrl.h>
#include <prsht.h>
#include <tchar.h>

#undef CallWindowProc
#undef CreateDC
#undef CreateDialog
#undef CreateDialogParam
#undef CreateFont
#undef CreateFontIndirect
#undef CreateWindow
#undef DefDlgProc
#undef DefWindowProc
#undef DialogBox
#undef DispatchMessage
#undef DrawText
#undef FindResource
#undef FindWindow
#undef GetClassInfo
#undef GetClassInfoEx
#undef GetClassName
#undef GetDlgItemText
#undef GetMessage
#undef GetNextWindow
#undef GetObject
#undef GetProp
#undef GetWindowLong
#undef GetWindowLongPtr
#undef GetWindowText
#undef GetWindowTextLength
#undef IsDialogMessage
#undef LoadBitmap
#undef LoadCursor
#undef LoadIcon
#undef LoadImage
#undef LoadLibrary
#undef LoadString
#undef MessageBox
#undef PeekMessage
#undef PostMessage
#undef PropertySheet
#undef RegisterClass
#undef RegisterClassEx
#undef SendDlgItemMessage
#undef SendMessage
#undef SetDlgItemText
#undef SetProp
#undef SetWindowLong
#undef SetWindowLongPtr
#undef SetWindowText
#undef SetWindowsHookEx
#undef UnregisterClass

// The wide character of the Windows API: 16 bits on both builds.
static_assert(sizeof(WCHAR) == 2);

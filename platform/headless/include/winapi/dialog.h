// Dialogs made of templates, and the keys that move about in them.
//
//     HWND dialog = CreateDialogParamW(module, MAKEINTRESOURCEW(10493), owner, procedure, 0);
//     MSG message;
//     while (GetMessageW(&message, nullptr, 0, 0) > 0) {
//         if (IsDialogMessageW(dialog, &message)) continue;
//         TranslateMessage(&message);
//         DispatchMessageW(&message);
//     }
//
// Both kinds of template are read, DIALOG and DIALOGEX, within the bytes of their resource: one that is cut
// off or makes no sense creates nothing. A dialog unit is 6 x 13 pixels, those of the 8 point dialog font,
// whatever font a template names. Dialogs are modeless: a modal one is its owner's loop around it.
#pragma once

#include "winapi/window.h"

using DLGPROC = INT_PTR (*)(HWND, UINT, WPARAM, LPARAM);

#define WC_DIALOG (MAKEINTRESOURCEW(0x8002))

inline constexpr DWORD DS_ABSALIGN = 0x0001;
inline constexpr DWORD DS_SETFONT = 0x0040;
inline constexpr DWORD DS_MODALFRAME = 0x0080;
inline constexpr DWORD DS_NOIDLEMSG = 0x0100;
inline constexpr DWORD DS_3DLOOK = 0x0004;
inline constexpr DWORD DS_CONTROL = 0x0400;
inline constexpr DWORD DS_CENTER = 0x0800;
inline constexpr DWORD DS_CONTEXTHELP = 0x2000;
inline constexpr DWORD DS_FIXEDSYS = 0x0008;
inline constexpr DWORD DS_SHELLFONT = DS_SETFONT | DS_FIXEDSYS;

inline constexpr int IDOK = 1;
inline constexpr int IDCANCEL = 2;

// Where a dialog's bytes hold the result of a message, its procedure and a number of its owner's.
inline constexpr int DLGWINDOWEXTRA = 30;
inline constexpr int DWLP_MSGRESULT = 0;
inline constexpr int DWLP_DLGPROC = 8;
inline constexpr int DWLP_USER = 16;

inline constexpr UINT DM_GETDEFID = WM_USER + 0;
inline constexpr UINT DM_SETDEFID = WM_USER + 1;
inline constexpr WORD DC_HASDEFID = 0x534B;

// Null and a last error when the module has no such template, the template is damaged, or a control or the
// dialog itself cannot be created: then nothing of it is left. The procedure gets WM_INITDIALOG with the
// parameter; if it answers nonzero, the first control that takes the tab key gets the focus.
HWND CreateDialogParamW(HINSTANCE module, LPCWSTR name, HWND owner, DLGPROC procedure, LPARAM parameter);
// The window procedure of dialogs: asks the dialog's own procedure first.
LRESULT DefDlgProcW(HWND dialog, UINT message, WPARAM wParam, LPARAM lParam);
// Handles the message when it is for the dialog or one of its controls: Tab, Enter, Escape and the arrow keys
// act, everything else is dispatched. Zero when the message is for others.
BOOL IsDialogMessageW(HWND dialog, MSG* message);
// The control that the tab key goes to from another one (null: the first). Controls of children with
// WS_EX_CONTROLPARENT count.
HWND GetNextDlgTabItem(HWND dialog, HWND control, BOOL previous);
// From dialog units to pixels.
BOOL MapDialogRect(HWND dialog, RECT* rect);

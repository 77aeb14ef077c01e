// Windows, messages, input and focus, off Windows.
//
//     WNDCLASSEXW description = {};
//     description.cbSize = sizeof(description);
//     description.lpfnWndProc = DefWindowProcW;
//     description.lpszClassName = _T("Frame");
//     RegisterClassExW(&description);
//     HWND frame = CreateWindowExW(0, _T("Frame"), _T("Title"), WS_OVERLAPPEDWINDOW, 0, 0, 300, 200, nullptr,
//     nullptr,
//                                  nullptr, nullptr);
//     SendMessageW(frame, WM_CLOSE, 0, 0);
//
// Windows have real state and send the messages that they send on Windows, in the same order; they are
// never painted, and there is no WM_PAINT. Nobody moves a mouse or presses a key unless the program
// posts it: a wait on an empty queue would last for ever, so it fails instead (ERROR_NO_INPUT, a code of
// this library's own).
//
// Handles are numbers that are checked on every call and never given twice. All windows belong to the one
// thread of the user interface. Class names BUTTON, STATIC and SysTreeView32 exist from the start.
#pragma once

#include "winapi/geometry.h"
#include "winapi/types.h"

KZ_DECLARE_HANDLE(HWND);
KZ_DECLARE_HANDLE(HHOOK);
KZ_DECLARE_HANDLE(HMENU);
KZ_DECLARE_HANDLE(HICON);
using HCURSOR = HICON;
struct HBRUSH__;
using HBRUSH = HBRUSH__*;
struct HRGN__;
using HRGN = HRGN__*;

using ATOM = WORD;
using LPRECT = RECT*;
using LPPOINT = POINT*;
using WNDPROC = LRESULT (*)(HWND, UINT, WPARAM, LPARAM);
using HOOKPROC = LRESULT (*)(int, WPARAM, LPARAM);
using WNDENUMPROC = BOOL (*)(HWND, LPARAM);

#define MAKELONG(low, high) \
    (static_cast<LONG>(static_cast<WORD>(low) | (static_cast<DWORD>(static_cast<WORD>(high)) << 16)))
#define MAKEWPARAM(low, high) (static_cast<WPARAM>(static_cast<DWORD>(MAKELONG(low, high))))
#define MAKELPARAM(low, high) (static_cast<LPARAM>(static_cast<DWORD>(MAKELONG(low, high))))
#define MAKELRESULT(low, high) (static_cast<LRESULT>(static_cast<DWORD>(MAKELONG(low, high))))

inline constexpr DWORD ERROR_INVALID_WINDOW_HANDLE = 1400;
inline constexpr DWORD ERROR_INVALID_HOOK_HANDLE = 1404;
inline constexpr DWORD ERROR_CANNOT_FIND_WND_CLASS = 1407;
inline constexpr DWORD ERROR_CLASS_ALREADY_EXISTS = 1410;
inline constexpr DWORD ERROR_CLASS_DOES_NOT_EXIST = 1411;
inline constexpr DWORD ERROR_CLASS_HAS_WINDOWS = 1412;
inline constexpr DWORD ERROR_INVALID_INDEX = 1413;
inline constexpr DWORD ERROR_CONTROL_ID_NOT_FOUND = 1421;
// Waits for input that nobody gives.
inline constexpr DWORD ERROR_NO_INPUT = 0x20000001;

// --- styles ---

inline constexpr DWORD WS_OVERLAPPED = 0x00000000;
inline constexpr DWORD WS_POPUP = 0x80000000;
inline constexpr DWORD WS_CHILD = 0x40000000;
inline constexpr DWORD WS_MINIMIZE = 0x20000000;
inline constexpr DWORD WS_VISIBLE = 0x10000000;
inline constexpr DWORD WS_DISABLED = 0x08000000;
inline constexpr DWORD WS_CLIPSIBLINGS = 0x04000000;
inline constexpr DWORD WS_CLIPCHILDREN = 0x02000000;
inline constexpr DWORD WS_MAXIMIZE = 0x01000000;
inline constexpr DWORD WS_CAPTION = 0x00C00000;
inline constexpr DWORD WS_BORDER = 0x00800000;
inline constexpr DWORD WS_DLGFRAME = 0x00400000;
inline constexpr DWORD WS_VSCROLL = 0x00200000;
inline constexpr DWORD WS_HSCROLL = 0x00100000;
inline constexpr DWORD WS_SYSMENU = 0x00080000;
inline constexpr DWORD WS_THICKFRAME = 0x00040000;
inline constexpr DWORD WS_GROUP = 0x00020000;
inline constexpr DWORD WS_TABSTOP = 0x00010000;
inline constexpr DWORD WS_MINIMIZEBOX = 0x00020000;
inline constexpr DWORD WS_MAXIMIZEBOX = 0x00010000;
inline constexpr DWORD WS_OVERLAPPEDWINDOW =
    WS_CAPTION | WS_SYSMENU | WS_THICKFRAME | WS_MINIMIZEBOX | WS_MAXIMIZEBOX;

inline constexpr DWORD WS_EX_DLGMODALFRAME = 0x00000001;
inline constexpr DWORD WS_EX_NOPARENTNOTIFY = 0x00000004;
inline constexpr DWORD WS_EX_TOPMOST = 0x00000008;
inline constexpr DWORD WS_EX_TOOLWINDOW = 0x00000080;
inline constexpr DWORD WS_EX_WINDOWEDGE = 0x00000100;
inline constexpr DWORD WS_EX_CLIENTEDGE = 0x00000200;
inline constexpr DWORD WS_EX_CONTEXTHELP = 0x00000400;
inline constexpr DWORD WS_EX_CONTROLPARENT = 0x00010000;
inline constexpr DWORD WS_EX_STATICEDGE = 0x00020000;

inline constexpr UINT CS_VREDRAW = 0x0001;
inline constexpr UINT CS_HREDRAW = 0x0002;
inline constexpr UINT CS_DBLCLKS = 0x0008;

inline constexpr DWORD BS_PUSHBUTTON = 0;
inline constexpr DWORD BS_DEFPUSHBUTTON = 1;
inline constexpr DWORD BS_CHECKBOX = 2;
inline constexpr DWORD BS_AUTOCHECKBOX = 3;
inline constexpr DWORD BS_RADIOBUTTON = 4;
inline constexpr DWORD BS_3STATE = 5;
inline constexpr DWORD BS_AUTO3STATE = 6;
inline constexpr DWORD BS_GROUPBOX = 7;
inline constexpr DWORD BS_AUTORADIOBUTTON = 9;
inline constexpr DWORD BS_TYPEMASK = 0x0000000F;
inline constexpr DWORD BS_NOTIFY = 0x00004000;

// --- messages ---

inline constexpr UINT WM_NULL = 0x0000;
inline constexpr UINT WM_CREATE = 0x0001;
inline constexpr UINT WM_DESTROY = 0x0002;
inline constexpr UINT WM_MOVE = 0x0003;
inline constexpr UINT WM_SIZE = 0x0005;
inline constexpr UINT WM_ACTIVATE = 0x0006;
inline constexpr UINT WM_SETFOCUS = 0x0007;
inline constexpr UINT WM_KILLFOCUS = 0x0008;
inline constexpr UINT WM_ENABLE = 0x000A;
inline constexpr UINT WM_SETREDRAW = 0x000B;
inline constexpr UINT WM_SETTEXT = 0x000C;
inline constexpr UINT WM_GETTEXT = 0x000D;
inline constexpr UINT WM_GETTEXTLENGTH = 0x000E;
inline constexpr UINT WM_PAINT = 0x000F;
inline constexpr UINT WM_CLOSE = 0x0010;
inline constexpr UINT WM_QUIT = 0x0012;
inline constexpr UINT WM_ERASEBKGND = 0x0014;
inline constexpr UINT WM_SYSCOLORCHANGE = 0x0015;
inline constexpr UINT WM_SHOWWINDOW = 0x0018;
inline constexpr UINT WM_GETMINMAXINFO = 0x0024;
inline constexpr UINT WM_NEXTDLGCTL = 0x0028;
inline constexpr UINT WM_SETFONT = 0x0030;
inline constexpr UINT WM_GETFONT = 0x0031;
inline constexpr UINT WM_WINDOWPOSCHANGING = 0x0046;
inline constexpr UINT WM_WINDOWPOSCHANGED = 0x0047;
inline constexpr UINT WM_NOTIFY = 0x004E;
inline constexpr UINT WM_STYLECHANGED = 0x007D;
inline constexpr UINT WM_NCCREATE = 0x0081;
inline constexpr UINT WM_NCDESTROY = 0x0082;
inline constexpr UINT WM_NCCALCSIZE = 0x0083;
inline constexpr UINT WM_NCHITTEST = 0x0084;
inline constexpr UINT WM_GETDLGCODE = 0x0087;
inline constexpr UINT WM_KEYDOWN = 0x0100;
inline constexpr UINT WM_KEYUP = 0x0101;
inline constexpr UINT WM_CHAR = 0x0102;
inline constexpr UINT WM_SYSKEYDOWN = 0x0104;
inline constexpr UINT WM_SYSKEYUP = 0x0105;
inline constexpr UINT WM_SYSCHAR = 0x0106;
inline constexpr UINT WM_INITDIALOG = 0x0110;
inline constexpr UINT WM_COMMAND = 0x0111;
inline constexpr UINT WM_SYSCOMMAND = 0x0112;
inline constexpr UINT WM_TIMER = 0x0113;
inline constexpr UINT WM_HSCROLL = 0x0114;
inline constexpr UINT WM_VSCROLL = 0x0115;
inline constexpr UINT WM_CHANGEUISTATE = 0x0127;
inline constexpr UINT WM_UPDATEUISTATE = 0x0128;
inline constexpr UINT WM_QUERYUISTATE = 0x0129;
inline constexpr UINT WM_MOUSEMOVE = 0x0200;
inline constexpr UINT WM_LBUTTONDOWN = 0x0201;
inline constexpr UINT WM_LBUTTONUP = 0x0202;
inline constexpr UINT WM_LBUTTONDBLCLK = 0x0203;
inline constexpr UINT WM_RBUTTONDOWN = 0x0204;
inline constexpr UINT WM_RBUTTONUP = 0x0205;
inline constexpr UINT WM_MOUSEWHEEL = 0x020A;
inline constexpr UINT WM_PARENTNOTIFY = 0x0210;
inline constexpr UINT WM_USER = 0x0400;
inline constexpr UINT WM_APP = 0x8000;

inline constexpr UINT WA_INACTIVE = 0;
inline constexpr UINT WA_ACTIVE = 1;
inline constexpr UINT WA_CLICKACTIVE = 2;
inline constexpr UINT SIZE_RESTORED = 0;
inline constexpr UINT SC_CLOSE = 0xF060;
inline constexpr UINT MK_LBUTTON = 0x0001;
inline constexpr UINT MK_SHIFT = 0x0004;
inline constexpr UINT MK_CONTROL = 0x0008;

inline constexpr UINT DLGC_WANTARROWS = 0x0001;
inline constexpr UINT DLGC_WANTTAB = 0x0002;
inline constexpr UINT DLGC_WANTALLKEYS = 0x0004;
inline constexpr UINT DLGC_DEFPUSHBUTTON = 0x0010;
inline constexpr UINT DLGC_UNDEFPUSHBUTTON = 0x0020;
inline constexpr UINT DLGC_RADIOBUTTON = 0x0040;
inline constexpr UINT DLGC_WANTCHARS = 0x0080;
inline constexpr UINT DLGC_STATIC = 0x0100;
inline constexpr UINT DLGC_BUTTON = 0x2000;

inline constexpr UINT BM_GETCHECK = 0x00F0;
inline constexpr UINT BM_SETCHECK = 0x00F1;
inline constexpr UINT BM_GETSTATE = 0x00F2;
inline constexpr UINT BM_SETSTATE = 0x00F3;
inline constexpr UINT BM_SETSTYLE = 0x00F4;
inline constexpr UINT BM_CLICK = 0x00F5;
inline constexpr UINT BST_UNCHECKED = 0;
inline constexpr UINT BST_CHECKED = 1;
inline constexpr UINT BST_INDETERMINATE = 2;
inline constexpr UINT BST_PUSHED = 4;
inline constexpr UINT BST_FOCUS = 8;
inline constexpr UINT BN_CLICKED = 0;
inline constexpr UINT BN_DOUBLECLICKED = 5;
inline constexpr UINT BN_SETFOCUS = 6;
inline constexpr UINT BN_KILLFOCUS = 7;

inline constexpr int VK_BACK = 0x08;
inline constexpr int VK_TAB = 0x09;
inline constexpr int VK_RETURN = 0x0D;
inline constexpr int VK_SHIFT = 0x10;
inline constexpr int VK_CONTROL = 0x11;
inline constexpr int VK_MENU = 0x12;
inline constexpr int VK_ESCAPE = 0x1B;
inline constexpr int VK_SPACE = 0x20;
inline constexpr int VK_PRIOR = 0x21;
inline constexpr int VK_NEXT = 0x22;
inline constexpr int VK_END = 0x23;
inline constexpr int VK_HOME = 0x24;
inline constexpr int VK_LEFT = 0x25;
inline constexpr int VK_UP = 0x26;
inline constexpr int VK_RIGHT = 0x27;
inline constexpr int VK_DOWN = 0x28;
inline constexpr int VK_MULTIPLY = 0x6A;
inline constexpr int VK_ADD = 0x6B;
inline constexpr int VK_SUBTRACT = 0x6D;

// --- structures ---

struct WNDCLASSEXW {
    UINT cbSize;
    UINT style;
    WNDPROC lpfnWndProc;
    int cbClsExtra;
    int cbWndExtra;
    HINSTANCE hInstance;
    HICON hIcon;
    HCURSOR hCursor;
    HBRUSH hbrBackground;
    LPCWSTR lpszMenuName;
    LPCWSTR lpszClassName;
    HICON hIconSm;
};

struct CREATESTRUCTW {
    LPVOID lpCreateParams;
    HINSTANCE hInstance;
    HMENU hMenu;
    HWND hwndParent;
    int cy;
    int cx;
    int y;
    int x;
    LONG style;
    LPCWSTR lpszName;
    LPCWSTR lpszClass;
    DWORD dwExStyle;
};

struct CBT_CREATEWNDW {
    CREATESTRUCTW* lpcs;
    HWND hwndInsertAfter;
};

struct MSG {
    HWND hwnd;
    UINT message;
    WPARAM wParam;
    LPARAM lParam;
    DWORD time;
    POINT pt;
};

struct MINMAXINFO {
    POINT ptReserved;
    POINT ptMaxSize;
    POINT ptMaxPosition;
    POINT ptMinTrackSize;
    POINT ptMaxTrackSize;
};

struct WINDOWPOS {
    HWND hwnd;
    HWND hwndInsertAfter;
    int x;
    int y;
    int cx;
    int cy;
    UINT flags;
};

struct NMHDR {
    HWND hwndFrom;
    UINT_PTR idFrom;
    UINT code;
};

// --- classes and windows ---

ATOM RegisterClassExW(const WNDCLASSEXW* description);
BOOL UnregisterClassW(LPCWSTR name, HINSTANCE instance);
BOOL GetClassInfoExW(HINSTANCE instance, LPCWSTR name, WNDCLASSEXW* description);
// The name as it was registered, whatever spelling the window was created with.
int GetClassNameW(HWND window, LPWSTR buffer, int size);

inline constexpr int CW_USEDEFAULT = static_cast<int>(0x80000000u);

HWND CreateWindowExW(DWORD extendedStyle, LPCWSTR className, LPCWSTR text, DWORD style, int x, int y,
                     int width, int height, HWND parent, HMENU menuOrId, HINSTANCE instance,
                     LPVOID parameter);
BOOL DestroyWindow(HWND window);
BOOL IsWindow(HWND window);

inline constexpr int GWL_STYLE = -16;
inline constexpr int GWL_EXSTYLE = -20;
inline constexpr int GWLP_WNDPROC = -4;
inline constexpr int GWLP_HINSTANCE = -6;
inline constexpr int GWLP_HWNDPARENT = -8;
inline constexpr int GWLP_ID = -12;
inline constexpr int GWLP_USERDATA = -21;

// Indexes from 0 on reach the bytes that the class reserved for each window.
LONG_PTR GetWindowLongPtrW(HWND window, int index);
LONG_PTR SetWindowLongPtrW(HWND window, int index, LONG_PTR value);
LONG GetWindowLongW(HWND window, int index);
LONG SetWindowLongW(HWND window, int index, LONG value);

BOOL SetWindowTextW(HWND window, LPCWSTR text);
int GetWindowTextW(HWND window, LPWSTR buffer, int size);
int GetWindowTextLengthW(HWND window);
BOOL EnableWindow(HWND window, BOOL enable);
BOOL IsWindowEnabled(HWND window);
// Visible itself, and all its parents.
BOOL IsWindowVisible(HWND window);

inline constexpr int SW_HIDE = 0;
inline constexpr int SW_SHOWNORMAL = 1;
inline constexpr int SW_SHOWNOACTIVATE = 4;
inline constexpr int SW_SHOW = 5;
inline constexpr int SW_SHOWNA = 8;
BOOL ShowWindow(HWND window, int command);

HWND SetFocus(HWND window);
HWND GetFocus();
HWND SetActiveWindow(HWND window);
HWND GetActiveWindow();
HWND GetForegroundWindow();
BOOL SetForegroundWindow(HWND window);
HWND SetCapture(HWND window);
HWND GetCapture();
BOOL ReleaseCapture();
// Nobody holds a key down.
std::int16_t GetKeyState(int key);

// --- relations ---

inline constexpr UINT GW_HWNDFIRST = 0;
inline constexpr UINT GW_HWNDLAST = 1;
inline constexpr UINT GW_HWNDNEXT = 2;
inline constexpr UINT GW_HWNDPREV = 3;
inline constexpr UINT GW_OWNER = 4;
inline constexpr UINT GW_CHILD = 5;
HWND GetWindow(HWND window, UINT relation);
inline constexpr UINT GA_PARENT = 1;
inline constexpr UINT GA_ROOT = 2;
HWND GetAncestor(HWND window, UINT kind);
// A child's parent, a popup's owner.
HWND GetParent(HWND window);
HWND SetParent(HWND window, HWND parent);
BOOL IsChild(HWND parent, HWND window);
HWND GetDlgItem(HWND parent, int id);
int GetDlgCtrlID(HWND window);
// Children and their children; stops when the function returns 0.
BOOL EnumChildWindows(HWND parent, WNDENUMPROC function, LPARAM parameter);
LRESULT SendDlgItemMessageW(HWND parent, int id, UINT message, WPARAM wParam, LPARAM lParam);

// --- geometry ---

BOOL GetClientRect(HWND window, RECT* rect);
BOOL GetWindowRect(HWND window, RECT* rect);
BOOL ClientToScreen(HWND window, POINT* point);
BOOL ScreenToClient(HWND window, POINT* point);
int MapWindowPoints(HWND from, HWND to, POINT* points, UINT count);
BOOL AdjustWindowRectEx(RECT* rect, DWORD style, BOOL menu, DWORD extendedStyle);
BOOL MoveWindow(HWND window, int x, int y, int width, int height, BOOL repaint);

inline constexpr UINT SWP_NOSIZE = 0x0001;
inline constexpr UINT SWP_NOMOVE = 0x0002;
inline constexpr UINT SWP_NOZORDER = 0x0004;
inline constexpr UINT SWP_NOREDRAW = 0x0008;
inline constexpr UINT SWP_NOACTIVATE = 0x0010;
inline constexpr UINT SWP_FRAMECHANGED = 0x0020;
inline constexpr UINT SWP_SHOWWINDOW = 0x0040;
inline constexpr UINT SWP_HIDEWINDOW = 0x0080;
#define HWND_TOP (static_cast<HWND>(nullptr))
#define HWND_BOTTOM (reinterpret_cast<HWND>(static_cast<LONG_PTR>(1)))
BOOL SetWindowPos(HWND window, HWND after, int x, int y, int width, int height, UINT flags);

// Nothing is painted: these check their handle.
BOOL InvalidateRect(HWND window, const RECT* rect, BOOL erase);
BOOL UpdateWindow(HWND window);
inline constexpr UINT RDW_INVALIDATE = 0x0001;
inline constexpr UINT RDW_ERASE = 0x0004;
inline constexpr UINT RDW_ALLCHILDREN = 0x0080;
inline constexpr UINT RDW_UPDATENOW = 0x0100;
BOOL RedrawWindow(HWND window, const RECT* rect, HRGN region, UINT flags);

inline constexpr int SM_CXSCREEN = 0;
inline constexpr int SM_CYSCREEN = 1;
inline constexpr int SM_CXVSCROLL = 2;
inline constexpr int SM_CYHSCROLL = 3;
inline constexpr int SM_CYCAPTION = 4;
inline constexpr int SM_CXBORDER = 5;
inline constexpr int SM_CYBORDER = 6;
inline constexpr int SM_CXDLGFRAME = 7;
inline constexpr int SM_CYDLGFRAME = 8;
inline constexpr int SM_CXICON = 11;
inline constexpr int SM_CYICON = 12;
inline constexpr int SM_CXMIN = 28;
inline constexpr int SM_CYMIN = 29;
inline constexpr int SM_CXFRAME = 32;
inline constexpr int SM_CYFRAME = 33;
inline constexpr int SM_CXEDGE = 45;
inline constexpr int SM_CYEDGE = 46;
inline constexpr int SM_CXSMICON = 49;
inline constexpr int SM_CYSMICON = 50;
inline constexpr int SM_CYSMCAPTION = 51;
int GetSystemMetrics(int index);

BOOL SetRect(RECT* rect, int left, int top, int right, int bottom);
BOOL SetRectEmpty(RECT* rect);
BOOL OffsetRect(RECT* rect, int x, int y);
BOOL InflateRect(RECT* rect, int x, int y);
BOOL IntersectRect(RECT* result, const RECT* one, const RECT* other);
BOOL IsRectEmpty(const RECT* rect);
BOOL EqualRect(const RECT* one, const RECT* other);
BOOL PtInRect(const RECT* rect, POINT point);

// --- messages ---

LRESULT DefWindowProcW(HWND window, UINT message, WPARAM wParam, LPARAM lParam);
LRESULT CallWindowProcW(WNDPROC procedure, HWND window, UINT message, WPARAM wParam, LPARAM lParam);
LRESULT SendMessageW(HWND window, UINT message, WPARAM wParam, LPARAM lParam);
BOOL PostMessageW(HWND window, UINT message, WPARAM wParam, LPARAM lParam);
void PostQuitMessage(int exitCode);

inline constexpr UINT PM_NOREMOVE = 0;
inline constexpr UINT PM_REMOVE = 1;
BOOL PeekMessageW(MSG* message, HWND window, UINT first, UINT last, UINT remove);
// -1 and ERROR_NO_INPUT on an empty queue; 0 for WM_QUIT.
BOOL GetMessageW(MSG* message, HWND window, UINT first, UINT last);
// Zero and ERROR_NO_INPUT on an empty queue.
BOOL WaitMessage();
// Posts the WM_CHAR of a key.
BOOL TranslateMessage(const MSG* message);
LRESULT DispatchMessageW(const MSG* message);

inline constexpr int WH_CBT = 5;
inline constexpr int HCBT_CREATEWND = 3;
inline constexpr int HCBT_DESTROYWND = 4;
inline constexpr int HCBT_ACTIVATE = 5;
inline constexpr int HCBT_SETFOCUS = 9;
// Only WH_CBT, of which HCBT_CREATEWND and HCBT_DESTROYWND are called. The newest hook is called first.
HHOOK SetWindowsHookExW(int kind, HOOKPROC procedure, HINSTANCE module, DWORD thread);
BOOL UnhookWindowsHookEx(HHOOK hook);
LRESULT CallNextHookEx(HHOOK hook, int code, WPARAM wParam, LPARAM lParam);
DWORD GetCurrentThreadId();

// Property sheets: a dialog whose pages, dialogs themselves, are reached by tabs.
//
//     PROPSHEETPAGEW page = {};
//     page.dwSize = sizeof(page);
//     page.dwFlags = PSP_USETITLE;
//     page.hInstance = module;
//     page.pszTemplate = MAKEINTRESOURCEW(4096);
//     page.pszTitle = _T("Fill");
//     page.pfnDlgProc = procedure;
//     PROPSHEETHEADERW sheet = {};
//     sheet.dwSize = sizeof(sheet);
//     sheet.dwFlags = PSH_PROPSHEETPAGE | PSH_MODELESS | PSH_NOAPPLYNOW;
//     sheet.nPages = 1;
//     sheet.ppsp = &page;
//     HWND window = reinterpret_cast<HWND>(PropertySheetW(&sheet));
//     // over when PSM_GETCURRENTPAGEHWND answers 0; then DestroyWindow(window)
//
// A page's dialog is created when it is first shown. Sheets are modeless, made of an array of pages; left
// out are wizards, pictures, and pages that come or go while the sheet is open.
#pragma once

#include "winapi/dialog.h"

struct PROPSHEETPAGEW;
struct _PSP;
using HPROPSHEETPAGE = _PSP*;
using LPFNPSPCALLBACKW = UINT (*)(HWND, UINT, PROPSHEETPAGEW*);
using PFNPROPSHEETCALLBACK = int (*)(HWND, UINT, LPARAM);

inline constexpr DWORD PSP_DEFAULT = 0x00000000;
inline constexpr DWORD PSP_DLGINDIRECT = 0x00000001;
inline constexpr DWORD PSP_USETITLE = 0x00000008;
inline constexpr DWORD PSP_HASHELP = 0x00000020;
inline constexpr DWORD PSP_USECALLBACK = 0x00000080;

inline constexpr UINT PSPCB_ADDREF = 0;
inline constexpr UINT PSPCB_RELEASE = 1;
inline constexpr UINT PSPCB_CREATE = 2;

inline constexpr DWORD PSH_DEFAULT = 0x00000000;
inline constexpr DWORD PSH_PROPTITLE = 0x00000001;
inline constexpr DWORD PSH_PROPSHEETPAGE = 0x00000008;
inline constexpr DWORD PSH_NOAPPLYNOW = 0x00000080;
inline constexpr DWORD PSH_USECALLBACK = 0x00000100;
inline constexpr DWORD PSH_HASHELP = 0x00000200;
inline constexpr DWORD PSH_MODELESS = 0x00000400;

struct PROPSHEETPAGEW {
    DWORD dwSize;
    DWORD dwFlags;
    HINSTANCE hInstance;
    union {
        LPCWSTR pszTemplate;
        const void* pResource;
    };
    union {
        HICON hIcon;
        LPCWSTR pszIcon;
    };
    LPCWSTR pszTitle;  // a string resource's number, too
    DLGPROC pfnDlgProc;
    LPARAM lParam;
    LPFNPSPCALLBACKW pfnCallback;
    UINT* pcRefParent;
    LPCWSTR pszHeaderTitle;
    LPCWSTR pszHeaderSubTitle;
    HANDLE hActCtx;
};

struct PROPSHEETHEADERW {
    DWORD dwSize;
    DWORD dwFlags;
    HWND hwndParent;
    HINSTANCE hInstance;
    union {
        HICON hIcon;
        LPCWSTR pszIcon;
    };
    LPCWSTR pszCaption;
    UINT nPages;
    union {
        UINT nStartPage;
        LPCWSTR pStartPage;
    };
    union {
        const PROPSHEETPAGEW* ppsp;
        HPROPSHEETPAGE* phpage;
    };
    PFNPROPSHEETCALLBACK pfnCallback;
};

struct PSHNOTIFY {
    NMHDR hdr;
    LPARAM lParam;
};

inline constexpr UINT PSN_FIRST = 0u - 200u;
inline constexpr UINT PSN_SETACTIVE = PSN_FIRST - 0;
inline constexpr UINT PSN_KILLACTIVE = PSN_FIRST - 1;  // TRUE: the page stays
inline constexpr UINT PSN_APPLY = PSN_FIRST - 2;       // lParam nonzero: by OK
inline constexpr UINT PSN_RESET = PSN_FIRST - 3;
inline constexpr UINT PSN_HELP = PSN_FIRST - 5;
inline constexpr UINT PSN_QUERYCANCEL = PSN_FIRST - 9;  // TRUE: the sheet stays

inline constexpr LRESULT PSNRET_NOERROR = 0;
inline constexpr LRESULT PSNRET_INVALID = 1;
inline constexpr LRESULT PSNRET_INVALID_NOCHANGEPAGE = 2;

inline constexpr UINT PSM_SETCURSEL = WM_USER + 101;
inline constexpr UINT PSM_CHANGED = WM_USER + 104;
inline constexpr UINT PSM_UNCHANGED = WM_USER + 109;
inline constexpr UINT PSM_PRESSBUTTON = WM_USER + 113;
inline constexpr UINT PSM_GETTABCONTROL = WM_USER + 116;
inline constexpr UINT PSM_ISDIALOGMESSAGE = WM_USER + 117;
inline constexpr UINT PSM_GETCURRENTPAGEHWND = WM_USER + 118;
inline constexpr UINT PSM_HWNDTOINDEX = WM_USER + 129;

inline constexpr int PSBTN_OK = 3;
inline constexpr int PSBTN_APPLYNOW = 4;
inline constexpr int PSBTN_CANCEL = 5;

inline constexpr int ID_APPLY_NOW = 0x3021;

// The sheet's window; 0 or -1 when it could not be created.
INT_PTR PropertySheetW(const PROPSHEETHEADERW* header);

// The tab control, SysTabControl32: a row of titles, or several, over an area for pages.
//
// Texts are 6 pixels per character wide, whatever the font. Left out: pictures, fixed widths, buttons, keys,
// scrolling (the tabs of a control without TCS_MULTILINE go on behind its right edge).
#pragma once

#include "winapi/window.h"

#define WC_TABCONTROLW _T("SysTabControl32")

inline constexpr DWORD TCS_MULTILINE = 0x0200;
inline constexpr DWORD TCS_FOCUSNEVER = 0x8000;

inline constexpr UINT TCIF_TEXT = 0x0001;
inline constexpr UINT TCIF_IMAGE = 0x0002;
inline constexpr UINT TCIF_PARAM = 0x0008;

struct TCITEMW {
    UINT mask;
    DWORD dwState;
    DWORD dwStateMask;
    LPWSTR pszText;
    int cchTextMax;
    int iImage;
    LPARAM lParam;
};

struct TCHITTESTINFO {
    POINT pt;
    UINT flags;
};

inline constexpr UINT TCHT_NOWHERE = 0x0001;
inline constexpr UINT TCHT_ONITEM = 0x0006;

inline constexpr UINT TCM_FIRST = 0x1300;
inline constexpr UINT TCM_GETITEMCOUNT = TCM_FIRST + 4;
inline constexpr UINT TCM_DELETEITEM = TCM_FIRST + 8;
inline constexpr UINT TCM_GETITEMRECT = TCM_FIRST + 10;
inline constexpr UINT TCM_GETCURSEL = TCM_FIRST + 11;
inline constexpr UINT TCM_SETCURSEL = TCM_FIRST + 12;
inline constexpr UINT TCM_HITTEST = TCM_FIRST + 13;
// Nonzero wParam: from an area for pages to the control that has it; zero: the other way round.
inline constexpr UINT TCM_ADJUSTRECT = TCM_FIRST + 40;
inline constexpr UINT TCM_GETROWCOUNT = TCM_FIRST + 44;
inline constexpr UINT TCM_GETITEMW = TCM_FIRST + 60;
inline constexpr UINT TCM_INSERTITEMW = TCM_FIRST + 62;

inline constexpr UINT TCN_FIRST = 0u - 550u;
inline constexpr UINT TCN_SELCHANGE = TCN_FIRST - 1;
inline constexpr UINT TCN_SELCHANGING = TCN_FIRST - 2;  // a nonzero answer refuses

// The tree view control, SysTreeView32.
//
//     HWND tree = CreateWindowExW(0, WC_TREEVIEWW, nullptr, WS_CHILD | WS_VISIBLE | TVS_HASBUTTONS, 0, 0,
//     200, 100,
//                                 frame, reinterpret_cast<HMENU>(1059), nullptr, nullptr);
//     TVINSERTSTRUCTW insert = {};
//     insert.hInsertAfter = TVI_LAST;
//     insert.item.mask = TVIF_TEXT;
//     insert.item.pszText = const_cast<LPWSTR>(_T("Fill"));
//     HTREEITEM item = reinterpret_cast<HTREEITEM>(
//         SendMessageW(tree, TVM_INSERTITEMW, 0, reinterpret_cast<LPARAM>(&insert)));
//
// Rows are 16 pixels high and texts 6 pixels per character wide, whatever the font. Left out: label editing,
// dragging, tool tips, custom drawing, sorting by a callback, searching by letters, check boxes of its own
// (TVS_CHECKBOXES). Item handles are checked numbers: a stale one is answered like a missing one.
#pragma once

#include "winapi/window.h"

struct _TREEITEM;
using HTREEITEM = _TREEITEM*;
struct _IMAGELIST;
using HIMAGELIST = _IMAGELIST*;

#define WC_TREEVIEWW _T("SysTreeView32")

inline constexpr DWORD TVS_HASBUTTONS = 0x0001;
inline constexpr DWORD TVS_HASLINES = 0x0002;
inline constexpr DWORD TVS_LINESATROOT = 0x0004;
inline constexpr DWORD TVS_EDITLABELS = 0x0008;
inline constexpr DWORD TVS_DISABLEDRAGDROP = 0x0010;
inline constexpr DWORD TVS_SHOWSELALWAYS = 0x0020;
inline constexpr DWORD TVS_CHECKBOXES = 0x0100;
inline constexpr DWORD TVS_FULLROWSELECT = 0x1000;
inline constexpr DWORD TVS_NOSCROLL = 0x2000;

inline constexpr UINT TVIF_TEXT = 0x0001;
inline constexpr UINT TVIF_IMAGE = 0x0002;
inline constexpr UINT TVIF_PARAM = 0x0004;
inline constexpr UINT TVIF_STATE = 0x0008;
inline constexpr UINT TVIF_HANDLE = 0x0010;
inline constexpr UINT TVIF_SELECTEDIMAGE = 0x0020;
inline constexpr UINT TVIF_CHILDREN = 0x0040;
inline constexpr UINT TVIF_INTEGRAL = 0x0080;
inline constexpr UINT TVIF_DI_SETITEM = 0x1000;

inline constexpr UINT TVIS_SELECTED = 0x0002;
inline constexpr UINT TVIS_CUT = 0x0004;
inline constexpr UINT TVIS_DROPHILITED = 0x0008;
inline constexpr UINT TVIS_BOLD = 0x0010;
inline constexpr UINT TVIS_EXPANDED = 0x0020;
inline constexpr UINT TVIS_EXPANDEDONCE = 0x0040;
inline constexpr UINT TVIS_EXPANDPARTIAL = 0x0080;
inline constexpr UINT TVIS_OVERLAYMASK = 0x0F00;
inline constexpr UINT TVIS_STATEIMAGEMASK = 0xF000;
#define INDEXTOSTATEIMAGEMASK(index) ((index) << 12)

inline constexpr int I_IMAGECALLBACK = -1;
inline constexpr int I_CHILDRENCALLBACK = -1;
#define LPSTR_TEXTCALLBACKW (reinterpret_cast<LPWSTR>(static_cast<INT_PTR>(-1)))

#define TVI_ROOT (reinterpret_cast<HTREEITEM>(static_cast<LONG_PTR>(-0x10000)))
#define TVI_FIRST (reinterpret_cast<HTREEITEM>(static_cast<LONG_PTR>(-0x0FFFF)))
#define TVI_LAST (reinterpret_cast<HTREEITEM>(static_cast<LONG_PTR>(-0x0FFFE)))
#define TVI_SORT (reinterpret_cast<HTREEITEM>(static_cast<LONG_PTR>(-0x0FFFD)))

struct TVITEMW {
    UINT mask;
    HTREEITEM hItem;
    UINT state;
    UINT stateMask;
    LPWSTR pszText;
    int cchTextMax;
    int iImage;
    int iSelectedImage;
    int cChildren;
    LPARAM lParam;
};

struct TVITEMEXW {
    UINT mask;
    HTREEITEM hItem;
    UINT state;
    UINT stateMask;
    LPWSTR pszText;
    int cchTextMax;
    int iImage;
    int iSelectedImage;
    int cChildren;
    LPARAM lParam;
    int iIntegral;
    UINT uStateEx;
    HWND hwnd;
    int iExpandedImage;
    int iReserved;
};

struct TVINSERTSTRUCTW {
    HTREEITEM hParent;
    HTREEITEM hInsertAfter;
    union {
        TVITEMEXW itemex;
        TVITEMW item;
    };
};

inline constexpr UINT TVHT_NOWHERE = 0x0001;
inline constexpr UINT TVHT_ONITEMICON = 0x0002;
inline constexpr UINT TVHT_ONITEMLABEL = 0x0004;
inline constexpr UINT TVHT_ONITEMINDENT = 0x0008;
inline constexpr UINT TVHT_ONITEMBUTTON = 0x0010;
inline constexpr UINT TVHT_ONITEMRIGHT = 0x0020;
inline constexpr UINT TVHT_ONITEMSTATEICON = 0x0040;
inline constexpr UINT TVHT_ONITEM = TVHT_ONITEMICON | TVHT_ONITEMLABEL | TVHT_ONITEMSTATEICON;
inline constexpr UINT TVHT_ABOVE = 0x0100;
inline constexpr UINT TVHT_BELOW = 0x0200;
inline constexpr UINT TVHT_TORIGHT = 0x0400;
inline constexpr UINT TVHT_TOLEFT = 0x0800;

struct TVHITTESTINFO {
    POINT pt;
    UINT flags;
    HTREEITEM hItem;
};

inline constexpr UINT TV_FIRST = 0x1100;
inline constexpr UINT TVM_DELETEITEM = TV_FIRST + 1;
inline constexpr UINT TVM_EXPAND = TV_FIRST + 2;
inline constexpr UINT TVM_GETITEMRECT = TV_FIRST + 4;
inline constexpr UINT TVM_GETCOUNT = TV_FIRST + 5;
inline constexpr UINT TVM_GETINDENT = TV_FIRST + 6;
inline constexpr UINT TVM_SETINDENT = TV_FIRST + 7;
inline constexpr UINT TVM_GETIMAGELIST = TV_FIRST + 8;
inline constexpr UINT TVM_SETIMAGELIST = TV_FIRST + 9;
inline constexpr UINT TVM_GETNEXTITEM = TV_FIRST + 10;
inline constexpr UINT TVM_SELECTITEM = TV_FIRST + 11;
inline constexpr UINT TVM_GETVISIBLECOUNT = TV_FIRST + 16;
inline constexpr UINT TVM_HITTEST = TV_FIRST + 17;
inline constexpr UINT TVM_SORTCHILDREN = TV_FIRST + 19;
inline constexpr UINT TVM_ENSUREVISIBLE = TV_FIRST + 20;
inline constexpr UINT TVM_SETITEMHEIGHT = TV_FIRST + 27;
inline constexpr UINT TVM_GETITEMHEIGHT = TV_FIRST + 28;
inline constexpr UINT TVM_GETITEMSTATE = TV_FIRST + 39;
inline constexpr UINT TVM_INSERTITEMW = TV_FIRST + 50;
inline constexpr UINT TVM_GETITEMW = TV_FIRST + 62;
inline constexpr UINT TVM_SETITEMW = TV_FIRST + 63;

inline constexpr UINT TVE_COLLAPSE = 0x0001;
inline constexpr UINT TVE_EXPAND = 0x0002;
inline constexpr UINT TVE_TOGGLE = 0x0003;
inline constexpr UINT TVE_EXPANDPARTIAL = 0x4000;
inline constexpr UINT TVE_COLLAPSERESET = 0x8000;

inline constexpr int TVSIL_NORMAL = 0;
inline constexpr int TVSIL_STATE = 2;

inline constexpr UINT TVGN_ROOT = 0x0000;
inline constexpr UINT TVGN_NEXT = 0x0001;
inline constexpr UINT TVGN_PREVIOUS = 0x0002;
inline constexpr UINT TVGN_PARENT = 0x0003;
inline constexpr UINT TVGN_CHILD = 0x0004;
inline constexpr UINT TVGN_FIRSTVISIBLE = 0x0005;
inline constexpr UINT TVGN_NEXTVISIBLE = 0x0006;
inline constexpr UINT TVGN_PREVIOUSVISIBLE = 0x0007;
inline constexpr UINT TVGN_DROPHILITE = 0x0008;
inline constexpr UINT TVGN_CARET = 0x0009;
inline constexpr UINT TVGN_LASTVISIBLE = 0x000A;

inline constexpr UINT TVC_UNKNOWN = 0;
inline constexpr UINT TVC_BYMOUSE = 1;
inline constexpr UINT TVC_BYKEYBOARD = 2;

inline constexpr UINT NM_FIRST = 0;
inline constexpr UINT NM_CLICK = NM_FIRST - 2;
inline constexpr UINT NM_DBLCLK = NM_FIRST - 3;
inline constexpr UINT NM_RETURN = NM_FIRST - 4;
inline constexpr UINT NM_RCLICK = NM_FIRST - 5;
inline constexpr UINT NM_SETFOCUS = NM_FIRST - 7;
inline constexpr UINT NM_KILLFOCUS = NM_FIRST - 8;

inline constexpr UINT TVN_FIRST = 0u - 400u;
inline constexpr UINT TVN_KEYDOWN = TVN_FIRST - 12;
inline constexpr UINT TVN_SELCHANGINGW = TVN_FIRST - 50;
inline constexpr UINT TVN_SELCHANGEDW = TVN_FIRST - 51;
inline constexpr UINT TVN_GETDISPINFOW = TVN_FIRST - 52;
inline constexpr UINT TVN_SETDISPINFOW = TVN_FIRST - 53;
inline constexpr UINT TVN_ITEMEXPANDINGW = TVN_FIRST - 54;
inline constexpr UINT TVN_ITEMEXPANDEDW = TVN_FIRST - 55;
inline constexpr UINT TVN_DELETEITEMW = TVN_FIRST - 58;

struct NMTREEVIEWW {
    NMHDR hdr;
    UINT action;
    TVITEMW itemOld;
    TVITEMW itemNew;
    POINT ptDrag;
};

struct NMTVDISPINFOW {
    NMHDR hdr;
    TVITEMW item;
};

#pragma pack(push, 1)
struct NMTVKEYDOWN {
    NMHDR hdr;
    WORD wVKey;
    UINT flags;
};
#pragma pack(pop)

struct INITCOMMONCONTROLSEX {
    DWORD dwSize;
    DWORD dwICC;
};
inline constexpr DWORD ICC_TREEVIEW_CLASSES = 0x00000002;
inline constexpr DWORD ICC_TAB_CLASSES = 0x00000008;
inline constexpr DWORD ICC_WIN95_CLASSES = 0x000000FF;
// The classes exist already: answers TRUE.
BOOL InitCommonControlsEx(const INITCOMMONCONTROLSEX* classes);
void InitCommonControls();

// Image lists and bitmaps whose colours are mapped as they are loaded.
//
//     HIMAGELIST list = ImageList_Create(16, 16, ILC_COLOR24, 10, 10);
//     int first = ImageList_Add(list, strip, nullptr);  // 112x16 pixels: seven pictures
//
// Pictures are kept with full colours whatever depth is asked for. There are no masks.
#pragma once

#include "winapi/gdi.h"

struct _IMAGELIST;
using HIMAGELIST = _IMAGELIST*;

#define ILC_COLOR 0x00000000
#define ILC_MASK 0x00000001
#define ILC_COLOR24 0x00000018
#define ILC_COLOR32 0x00000020

#define ILD_NORMAL 0x00000000

#define CLR_NONE 0xFFFFFFFFu
#define CLR_DEFAULT 0xFF000000u

struct IMAGEINFO {
    HBITMAP hbmImage;  // the list's own, with every picture: neither to be deleted nor kept
    HBITMAP hbmMask;   // null
    int Unused1;
    int Unused2;
    RECT rcImage;
};

// Null for an empty picture size and for ILC_MASK.
HIMAGELIST ImageList_Create(int width, int height, UINT flags, int initial, int grow);
BOOL ImageList_Destroy(HIMAGELIST list);
int ImageList_GetImageCount(HIMAGELIST list);
BOOL ImageList_GetIconSize(HIMAGELIST list, int* width, int* height);
// Cuts the bitmap's top rows into pictures of the list's width and returns the index of the first; a rest to
// the right is dropped. -1 when the bitmap holds no whole picture. Must not be selected into a context.
int ImageList_Add(HIMAGELIST list, HBITMAP image, HBITMAP mask);
// Those behind it move up; -1: all. FALSE when there is none of that index.
BOOL ImageList_Remove(HIMAGELIST list, int index);
// Returns the colour before; CLR_NONE at first.
COLORREF ImageList_SetBkColor(HIMAGELIST list, COLORREF color);
COLORREF ImageList_GetBkColor(HIMAGELIST list);
BOOL ImageList_GetImageInfo(HIMAGELIST list, int index, IMAGEINFO* info);
// ILD_NORMAL only.
BOOL ImageList_Draw(HIMAGELIST list, int index, HDC context, int x, int y, UINT style);

struct COLORMAP {
    COLORREF from;
    COLORREF to;
};
using LPCOLORMAP = COLORMAP*;

// A bitmap resource as a bitmap of the display. Every entry of its colour table that equals a `from` becomes
// the `to` beside it; a picture without a colour table keeps its colours. Reads uncompressed pictures of 1,
// 4, 8, 16, 24 and 32 bits. Null when there is no such resource, and when it is damaged. Flags must be 0.
HBITMAP CreateMappedBitmap(HINSTANCE module, INT_PTR id, UINT flags, LPCOLORMAP map, int count);

// Device contexts, bitmaps, brushes and system colours.
//
// Enough of GDI to make small pictures: 32-bit and monochrome memory bitmaps, solid brushes, copying and
// filling with clipping at every edge. There is no display: a display or window context serves as a model for
// compatible contexts and bitmaps, drawing on it succeeds and is seen by nobody, reading from it fails.
//
//     HDC display = CreateDCW(L"DISPLAY", nullptr, nullptr, nullptr);
//     HDC memory = CreateCompatibleDC(display);
//     HBITMAP bitmap = CreateCompatibleBitmap(display, 16, 16);  // of `memory` it would be monochrome
//     HGDIOBJ before = SelectObject(memory, bitmap);
//     PatBlt(memory, 0, 0, 16, 16, WHITENESS);
//     SelectObject(memory, before);  // a selected bitmap cannot be deleted, nor selected elsewhere
//     DeleteObject(bitmap);
//
// Handles are addresses, so that a leak checker sees who still holds one, but every call checks its handles:
// a stale, foreign or null one makes the call fail.
#pragma once

#include "winapi/geometry.h"
#include "winapi/types.h"

KZ_DECLARE_HANDLE(HDC);
KZ_DECLARE_HANDLE(HBITMAP);
KZ_DECLARE_HANDLE(HBRUSH);
KZ_DECLARE_HANDLE(HFONT);
using HGDIOBJ = void*;
struct HWND__;
using HWND = HWND__*;
struct DEVMODEW;

#define RGB(r, g, b)                                                                                  \
    (static_cast<COLORREF>(static_cast<BYTE>(r)) | static_cast<COLORREF>(static_cast<BYTE>(g)) << 8 | \
     static_cast<COLORREF>(static_cast<BYTE>(b)) << 16)
#define GetRValue(color) (static_cast<BYTE>(color))
#define GetGValue(color) (static_cast<BYTE>((color) >> 8))
#define GetBValue(color) (static_cast<BYTE>((color) >> 16))

#define CLR_INVALID 0xFFFFFFFFu

// Kinds of regions.
#define ERROR 0
#define NULLREGION 1
#define SIMPLEREGION 2

#define BLACKNESS 0x00000042u
#define SRCCOPY 0x00CC0020u
#define PATCOPY 0x00F00021u
#define WHITENESS 0x00FF0062u

// Stock objects. Deleting one does nothing.
enum {
    WHITE_BRUSH = 0,
    LTGRAY_BRUSH = 1,
    GRAY_BRUSH = 2,
    DKGRAY_BRUSH = 3,
    BLACK_BRUSH = 4,
};

enum {
    COLOR_WINDOW = 5,
    COLOR_WINDOWTEXT = 8,
    COLOR_HIGHLIGHT = 13,
    COLOR_HIGHLIGHTTEXT = 14,
    COLOR_3DFACE = 15,
    COLOR_BTNFACE = 15,
    COLOR_3DSHADOW = 16,
    COLOR_BTNSHADOW = 16,
    COLOR_GRAYTEXT = 17,
    COLOR_BTNTEXT = 18,
    COLOR_3DHIGHLIGHT = 20,
    COLOR_BTNHIGHLIGHT = 20,
};

struct BITMAP {
    LONG bmType;
    LONG bmWidth;
    LONG bmHeight;
    LONG bmWidthBytes;
    WORD bmPlanes;
    WORD bmBitsPixel;
    LPVOID bmBits;  // null unless made by CreateDIBSection
};

struct LOGBRUSH {
    UINT lbStyle;
    COLORREF lbColor;
    ULONG_PTR lbHatch;
};

#define BS_SOLID 0

struct LOGFONTW {
    LONG lfHeight;  // negative: without the space above capitals
    LONG lfWidth;
    LONG lfEscapement;
    LONG lfOrientation;
    LONG lfWeight;
    BYTE lfItalic;
    BYTE lfUnderline;
    BYTE lfStrikeOut;
    BYTE lfCharSet;
    BYTE lfOutPrecision;
    BYTE lfClipPrecision;
    BYTE lfQuality;
    BYTE lfPitchAndFamily;
    WCHAR lfFaceName[32];
};

inline constexpr LONG FW_NORMAL = 400;
inline constexpr BYTE DEFAULT_CHARSET = 1;

struct RGBQUAD {
    BYTE rgbBlue;
    BYTE rgbGreen;
    BYTE rgbRed;
    BYTE rgbReserved;
};

struct BITMAPINFOHEADER {
    DWORD biSize;
    LONG biWidth;
    LONG biHeight;  // negative: the first row is the top one
    WORD biPlanes;
    WORD biBitCount;
    DWORD biCompression;
    DWORD biSizeImage;
    LONG biXPelsPerMeter;
    LONG biYPelsPerMeter;
    DWORD biClrUsed;
    DWORD biClrImportant;
};

struct BITMAPINFO {
    BITMAPINFOHEADER bmiHeader;
    RGBQUAD bmiColors[1];
};

#define BI_RGB 0
#define DIB_RGB_COLORS 0

// --- device contexts ---

// Only of "DISPLAY".
HDC CreateDCW(LPCWSTR driver, LPCWSTR device, LPCWSTR output, const DEVMODEW* mode);
// A memory context; a monochrome bitmap of one pixel is selected into it. Null stands for the display.
HDC CreateCompatibleDC(HDC model);
BOOL DeleteDC(HDC context);
// The context of a window, of the display for null. Given back by ReleaseDC.
HDC GetDC(HWND window);
int ReleaseDC(HWND window, HDC context);

// Returns what was selected before. Null, with nothing changed, for a bitmap that is selected into another
// context and for one that is to be selected into a display's context.
HGDIOBJ SelectObject(HDC context, HGDIOBJ object);

// The part of the context that drawing can reach; empty for a display's context.
int GetClipBox(HDC context, RECT* box);

// The colours between which monochrome and coloured bitmaps are translated. Return the colour before.
COLORREF SetBkColor(HDC context, COLORREF color);
COLORREF GetBkColor(HDC context);
COLORREF SetTextColor(HDC context, COLORREF color);
COLORREF GetTextColor(HDC context);

// --- objects ---

// Zero for what is selected into a context.
BOOL DeleteObject(HGDIOBJ object);
// Fills a BITMAP, a LOGBRUSH or a LOGFONTW and returns its size; with a null buffer, returns just the size. Zero when the
// buffer is too small.
int GetObjectW(HGDIOBJ object, int size, LPVOID buffer);
HGDIOBJ GetStockObject(int index);
HBRUSH CreateSolidBrush(COLORREF color);
// Nothing is written with a font: it keeps its description.
HFONT CreateFontIndirectW(const LOGFONTW* description);

// --- bitmaps ---

// A black bitmap: 32 bits deep for a display's context, as deep as the selected bitmap for a memory context.
// Null for an empty size.
HBITMAP CreateCompatibleBitmap(HDC context, int width, int height);
// 32 bits, uncompressed, top row first (biHeight negative). The pixels, 0x00RRGGBB in rows of exactly the
// width, live as long as the bitmap.
HBITMAP CreateDIBSection(HDC context, const BITMAPINFO* info, UINT usage, void** bits, HANDLE section,
                         DWORD offset);
// Copies rows out of a bitmap as 32-bit pixels (0x00RRGGBB), counted from the bottom unless biHeight is
// negative. Returns the number of rows. The bitmap must not be selected into a context.
int GetDIBits(HDC context, HBITMAP bitmap, UINT first, UINT rows, LPVOID bits, BITMAPINFO* info, UINT usage);

// --- drawing ---

// SRCCOPY only. What would come from outside the source is left as it was.
BOOL BitBlt(HDC target, int x, int y, int width, int height, HDC source, int sourceX, int sourceY,
            DWORD operation);
// PATCOPY (the selected brush), BLACKNESS and WHITENESS.
BOOL PatBlt(HDC target, int x, int y, int width, int height, DWORD operation);
// CLR_INVALID outside the bitmap. SetPixel returns the colour that the pixel took.
COLORREF GetPixel(HDC context, int x, int y);
COLORREF SetPixel(HDC context, int x, int y, COLORREF color);
// Drawing may be queued on Windows; a program that reads a section's bits flushes first.
BOOL GdiFlush();

// --- system colours ---

DWORD GetSysColor(int index);
// Sets colours for this process. All or none: zero when an index does not exist.
BOOL SetSysColors(int count, const INT* indexes, const COLORREF* colors);
// A brush that follows the system colour. Not to be deleted.
HBRUSH GetSysColorBrush(int index);

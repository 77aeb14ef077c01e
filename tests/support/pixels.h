// Pictures for expectations: a bitmap's pixels, or an image list's picture, as rows of letters.
//
//     EXPECT_EQ(picture(bitmap), "wwww\n"
//                                "wrrw\n");
#pragma once

#include <algorithm>
#include <map>
#include <string>
#include <vector>

#include "platform/afx/image_list.h"

namespace test {

constexpr COLORREF kBlack = RGB(0, 0, 0);
constexpr COLORREF kWhite = RGB(255, 255, 255);
constexpr COLORREF kRed = RGB(255, 0, 0);
constexpr COLORREF kGreen = RGB(0, 255, 0);
constexpr COLORREF kBlue = RGB(0, 0, 255);

// The letters of colours; any other colour is a question mark.
inline const std::map<COLORREF, char>& letters() {
    static const std::map<COLORREF, char> table{
        {kBlack, '.'}, {kWhite, 'w'}, {kRed, 'r'}, {kGreen, 'g'}, {kBlue, 'b'}};
    return table;
}

struct Pixels {
    int width = 0;
    int height = 0;
    std::vector<COLORREF> colors;  // top row first

    COLORREF at(int x, int y) const { return colors[static_cast<std::size_t>(y * width + x)]; }
    friend bool operator==(const Pixels&, const Pixels&) = default;
};

// Reads a bitmap that is not selected into a context; empty for one that is no bitmap.
inline Pixels pixelsOf(HBITMAP bitmap) {
    BITMAP form{};
    if (GetObjectW(bitmap, sizeof form, &form) == 0) return {};
    BITMAPINFO info{};
    info.bmiHeader.biSize = sizeof info.bmiHeader;
    info.bmiHeader.biWidth = form.bmWidth;
    info.bmiHeader.biHeight = -form.bmHeight;
    info.bmiHeader.biPlanes = 1;
    info.bmiHeader.biBitCount = 32;
    std::vector<DWORD> rows(static_cast<std::size_t>(form.bmWidth) * static_cast<std::size_t>(form.bmHeight));
    CClientDC screen(nullptr);
    if (GetDIBits(screen, bitmap, 0, static_cast<UINT>(form.bmHeight), rows.data(), &info, DIB_RGB_COLORS) !=
        form.bmHeight) {
        return {};
    }
    Pixels pixels{static_cast<int>(form.bmWidth), static_cast<int>(form.bmHeight), {}};
    for (DWORD pixel : rows)
        pixels.colors.push_back(RGB(pixel >> 16 & 0xff, pixel >> 8 & 0xff, pixel & 0xff));
    return pixels;
}

// Reads a picture of an image list by drawing it; empty when the list has no such picture.
inline Pixels pixelsOf(HIMAGELIST list, int index) {
    int width = 0;
    int height = 0;
    if (!ImageList_GetIconSize(list, &width, &height)) return {};
    CClientDC screen(nullptr);
    CDC memory;
    CBitmap bitmap;
    if (!memory.CreateCompatibleDC(&screen) || !bitmap.CreateCompatibleBitmap(&screen, width, height))
        return {};
    {
        CSelection target(memory, bitmap);
        if (!ImageList_Draw(list, index, memory, 0, 0, ILD_NORMAL)) return {};
    }
    return pixelsOf(bitmap);
}

inline std::string picture(const Pixels& pixels) {
    std::string rows;
    for (int y = 0; y < pixels.height; ++y) {
        for (int x = 0; x < pixels.width; ++x) {
            auto letter = letters().find(pixels.at(x, y));
            rows += letter == letters().end() ? '?' : letter->second;
        }
        rows += '\n';
    }
    return rows;
}

inline std::string picture(HBITMAP bitmap) {
    return picture(pixelsOf(bitmap));
}
inline std::string picture(HIMAGELIST list, int index) {
    return picture(pixelsOf(list, index));
}

// A bitmap of the display with the picture that the rows of letters show.
inline void paint(CBitmap& bitmap, const std::string& rows) {
    auto width = static_cast<int>(rows.find('\n'));
    auto height = static_cast<int>(std::count(rows.begin(), rows.end(), '\n'));
    CClientDC screen(nullptr);
    CDC memory;
    memory.CreateCompatibleDC(&screen);
    bitmap.DeleteObject();
    bitmap.CreateCompatibleBitmap(&screen, width, height);
    CSelection target(memory, bitmap);
    for (int y = 0; y < height; ++y) {
        for (int x = 0; x < width; ++x) {
            char letter = rows[static_cast<std::size_t>(y * (width + 1) + x)];
            for (auto [color, name] : letters()) {
                if (name == letter) memory.SetPixel(x, y, color);
            }
        }
    }
}

// A system colour until the end of the block. The colours belong to the whole desktop: a test program that
// uses this holds the resource lock "system_colours".
class SystemColor {
public:
    SystemColor(int index, COLORREF color) : m_index(index), m_before(GetSysColor(index)) { set(color); }
    ~SystemColor() { set(m_before); }
    SystemColor(const SystemColor&) = delete;
    SystemColor& operator=(const SystemColor&) = delete;

private:
    void set(COLORREF color) { SetSysColors(1, &m_index, &color); }

    int m_index;
    COLORREF m_before;
};

}  // namespace test

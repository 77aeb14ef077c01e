// Points, sizes and rectangles with the arithmetic that handlers need.
#pragma once

#include "platform/winapi.h"

struct CSize : SIZE {
    CSize() : SIZE{0, 0} {}
    CSize(LONG width, LONG height) : SIZE{width, height} {}
    CSize(SIZE size) : SIZE(size) {}
};

struct CPoint : POINT {
    CPoint() : POINT{0, 0} {}
    CPoint(LONG left, LONG top) : POINT{left, top} {}
    CPoint(POINT point) : POINT(point) {}
    // The position of a mouse message: signed 16-bit numbers.
    explicit CPoint(LPARAM position)
        : POINT{static_cast<short>(LOWORD(position)), static_cast<short>(HIWORD(position))} {}
};

struct CRect : RECT {
    CRect() : RECT{0, 0, 0, 0} {}
    CRect(LONG from_x, LONG from_y, LONG to_x, LONG to_y) : RECT{from_x, from_y, to_x, to_y} {}
    CRect(const RECT& rect) : RECT(rect) {}
    operator LPRECT() { return this; }
    LONG Width() const { return right - left; }
    LONG Height() const { return bottom - top; }
    CPoint TopLeft() const { return {left, top}; }
    CSize Size() const { return {Width(), Height()}; }
    BOOL PtInRect(POINT point) const { return ::PtInRect(this, point); }
    BOOL IsRectEmpty() const { return ::IsRectEmpty(this); }
};

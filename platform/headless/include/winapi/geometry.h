// Points, sizes and rectangles in pixels. A rectangle's right and bottom edges lie outside it.
#pragma once

#include "winapi/types.h"

struct POINT {
    LONG x;
    LONG y;
};

struct SIZE {
    LONG cx;
    LONG cy;
};

struct RECT {
    LONG left;
    LONG top;
    LONG right;
    LONG bottom;
};

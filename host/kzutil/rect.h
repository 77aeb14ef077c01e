// Points and rectangles in drawing coordinates: user units of the drawing, y downwards.
#pragma once

template <class T>
struct ATPoint {
    T x{};
    T y{};
};

// Left and top inclusive; the default rectangle is empty.
template <class T>
struct ATRect {
    T left{};
    T top{};
    T right{};
    T bottom{};

    T Width() const { return right - left; }
    T Height() const { return bottom - top; }
    // Non-zero without width or without height, so also for a horizontal or vertical line.
    int IsRectEmpty() const { return !(Width() > T{} && Height() > T{}); }
    friend bool operator==(const ATRect&, const ATRect&) = default;
};

using AFPoint = ATPoint<double>;
using AFRect = ATRect<double>;

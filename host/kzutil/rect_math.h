// Rectangles together: for ATRect, and for RECT, whose left and top are inclusive as well.
//
//     if (!isEmpty(intersection(area, visible))) touched = unionOf(touched, area);
//     extend(box, point);
#pragma once

#include <algorithm>

// True without width or without height.
template <class Rect>
bool isEmpty(const Rect& rect) {
    return !(rect.right > rect.left && rect.bottom > rect.top);
}

// Empty where the two have nothing in common.
template <class Rect>
Rect intersection(const Rect& a, const Rect& b) {
    return {std::max(a.left, b.left), std::max(a.top, b.top), std::min(a.right, b.right),
            std::min(a.bottom, b.bottom)};
}

// The smallest rectangle around both, whether they are empty or not: a line has a place, too.
template <class Rect>
Rect unionOf(const Rect& a, const Rect& b) {
    return {std::min(a.left, b.left), std::min(a.top, b.top), std::max(a.right, b.right),
            std::max(a.bottom, b.bottom)};
}

// Makes the rectangle reach the point.
template <class Rect, class Point>
void extend(Rect& rect, const Point& point) {
    rect.left = std::min(rect.left, point.x);
    rect.top = std::min(rect.top, point.y);
    rect.right = std::max(rect.right, point.x);
    rect.bottom = std::max(rect.bottom, point.y);
}

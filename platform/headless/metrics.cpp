// Fixed measures of the screen, and arithmetic on rectangles.
#include <algorithm>

#include "platform/headless/include/windows.h"

int GetSystemMetrics(int index) {
    switch (index) {
        case SM_CXSCREEN:
            return 1280;
        case SM_CYSCREEN:
            return 1024;
        case SM_CXVSCROLL:
        case SM_CYHSCROLL:
            return 17;
        case SM_CYCAPTION:
        case SM_CYSMCAPTION:
            return 19;
        case SM_CXBORDER:
        case SM_CYBORDER:
            return 1;
        case SM_CXDLGFRAME:
        case SM_CYDLGFRAME:
            return 3;
        case SM_CXFRAME:
        case SM_CYFRAME:
            return 4;
        case SM_CXICON:
        case SM_CYICON:
            return 32;
        case SM_CXMIN:
            return 112;
        case SM_CYMIN:
            return 27;
        case SM_CXEDGE:
        case SM_CYEDGE:
            return 2;
        case SM_CXSMICON:
        case SM_CYSMICON:
            return 16;
        default:
            return 0;
    }
}

BOOL SetRect(RECT* rect, int left, int top, int right, int bottom) {
    *rect = {left, top, right, bottom};
    return TRUE;
}

BOOL SetRectEmpty(RECT* rect) {
    return SetRect(rect, 0, 0, 0, 0);
}

BOOL OffsetRect(RECT* rect, int x, int y) {
    return SetRect(rect, rect->left + x, rect->top + y, rect->right + x, rect->bottom + y);
}

BOOL InflateRect(RECT* rect, int x, int y) {
    return SetRect(rect, rect->left - x, rect->top - y, rect->right + x, rect->bottom + y);
}

BOOL IsRectEmpty(const RECT* rect) {
    return rect->left >= rect->right || rect->top >= rect->bottom;
}

BOOL IntersectRect(RECT* result, const RECT* one, const RECT* other) {
    SetRect(result, std::max(one->left, other->left), std::max(one->top, other->top),
            std::min(one->right, other->right), std::min(one->bottom, other->bottom));
    if (!IsRectEmpty(result)) return TRUE;
    SetRectEmpty(result);
    return FALSE;
}

BOOL EqualRect(const RECT* one, const RECT* other) {
    return one->left == other->left && one->top == other->top && one->right == other->right &&
           one->bottom == other->bottom;
}

BOOL PtInRect(const RECT* rect, POINT point) {
    return point.x >= rect->left && point.x < rect->right && point.y >= rect->top && point.y < rect->bottom;
}

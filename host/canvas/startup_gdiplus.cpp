#include "canvas/gdiplus_startup.h"
#include "platform/winapi.h"

// <gdiplus.h> takes min and max from where it stands.
#include <algorithm>
using std::max;
using std::min;

#include <objidl.h>

#include <gdiplus.h>

void ensureGdiplus() {
    static const ULONG_PTR token = [] {
        ULONG_PTR started = 0;
        Gdiplus::GdiplusStartupInput input;
        Gdiplus::GdiplusStartup(&started, &input, nullptr);
        return started;
    }();
    static_cast<void>(token);
}

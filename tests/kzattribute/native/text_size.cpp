#include "kzattribute/text_size.h"

#include <cmath>

#include "canvas/text_outline.h"
#include "kzutil/utf.h"

SIZE test::textSize(HWND, const std::basic_string<WCHAR>& text) {
    constexpr double kEightPoints = 8 * 96 / 72.0;
    const double width = outlineText(kzutil::narrow(text), {"sans-serif", kEightPoints, 400, false}).advance;
    return {static_cast<LONG>(std::ceil(width)), 13};
}

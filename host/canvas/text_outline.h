// Texts as outlines: laid out by pango (text_outline_pango.cpp) or by GDI (text_outline_windows.cpp), picked
// by the build.
//
//     ATextOutline text = outlineText("Harbour", {"sans-serif", 12, 400, false});
//     canvas.fill(text.path, AAffine::translation(x, baseline), paint, EFillRule::nonZero);
#pragma once

#include <string>
#include <string_view>

#include "canvas/path.h"

struct AFont {
    std::string family;  // UTF-8: names in order of preference, separated by commas; empty: a sans-serif one
    double size = 16;    // of the em square
    int weight = 400;    // 100 to 900
    bool italic = false;
};

struct ATextOutline {
    APath path;          // its baseline starts at 0, 0
    double advance = 0;  // where a following text would start
};

// One line of UTF-8 text; a character that no font has shows as the library shows it. Empty without text,
// with a size that is not positive, and for bytes that are not UTF-8.
ATextOutline outlineText(std::string_view text, const AFont& font);

#include <algorithm>
#include <array>

#include "platform/headless/gdi/objects.h"

namespace headless {

namespace {

// What a fresh desktop shows, by index from COLOR_SCROLLBAR on. Index 25 is not in use.
constexpr std::array<COLORREF, 31> kDefaults{
    RGB(200, 200, 200), RGB(0, 0, 0),       RGB(153, 180, 209), RGB(191, 205, 219), RGB(240, 240, 240),
    RGB(255, 255, 255), RGB(100, 100, 100), RGB(0, 0, 0),       RGB(0, 0, 0),       RGB(0, 0, 0),
    RGB(180, 180, 180), RGB(244, 247, 252), RGB(171, 171, 171), RGB(0, 120, 215),   RGB(255, 255, 255),
    RGB(240, 240, 240), RGB(160, 160, 160), RGB(109, 109, 109), RGB(0, 0, 0),       RGB(0, 0, 0),
    RGB(255, 255, 255), RGB(105, 105, 105), RGB(227, 227, 227), RGB(0, 0, 0),       RGB(255, 255, 225),
    RGB(0, 0, 0),       RGB(0, 102, 204),   RGB(185, 209, 234), RGB(215, 228, 242), RGB(0, 120, 215),
    RGB(240, 240, 240),
};

std::array<COLORREF, kDefaults.size()> colors = kDefaults;

bool exists(int index) {
    return index >= 0 && index < static_cast<int>(colors.size());
}

}  // namespace

}  // namespace headless

using namespace headless;

DWORD GetSysColor(int index) {
    return exists(index) ? colors[static_cast<std::size_t>(index)] : 0;
}

BOOL SetSysColors(int count, const INT* indexes, const COLORREF* values) {
    if (count < 0 || (count > 0 && (indexes == nullptr || values == nullptr))) return FALSE;
    if (!std::all_of(indexes, indexes + count, exists)) return FALSE;
    for (int i = 0; i < count; ++i) colors[static_cast<std::size_t>(indexes[i])] = values[i] & 0xffffff;
    return TRUE;
}

HBRUSH GetSysColorBrush(int index) {
    static const std::array<Brush*, kDefaults.size()> brushes = [] {
        std::array<Brush*, kDefaults.size()> made{};
        for (std::size_t i = 0; i < made.size(); ++i) {
            made[i] = new Brush(0);
            made[i]->systemColor = static_cast<int>(i);
            made[i]->permanent = true;
            enterObject(made[i]);
        }
        return made;
    }();
    return exists(index) ? handleOf<HBRUSH>(brushes[static_cast<std::size_t>(index)]) : nullptr;
}

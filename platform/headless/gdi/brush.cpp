#include <array>

#include "platform/headless/gdi/objects.h"

namespace headless {

Brush& stockBrush(int index) {
    static const std::array<Brush*, 5> brushes = [] {
        constexpr std::array<BYTE, 5> grays{0xff, 0xc0, 0x80, 0x40, 0x00};
        std::array<Brush*, 5> made{};
        for (std::size_t i = 0; i < grays.size(); ++i) {
            made[i] = new Brush(RGB(grays[i], grays[i], grays[i]));
            made[i]->permanent = true;
            enterObject(made[i]);
        }
        return made;
    }();
    return *brushes[static_cast<std::size_t>(index)];
}

COLORREF brushColor(const Brush& brush) {
    return brush.systemColor < 0 ? brush.color : GetSysColor(brush.systemColor);
}

}  // namespace headless

using namespace headless;

HBRUSH CreateSolidBrush(COLORREF color) {
    return guarded([&] { return handOver<HBRUSH>(std::make_unique<Brush>(color & 0xffffff)); });
}

HGDIOBJ GetStockObject(int index) {
    return index >= WHITE_BRUSH && index <= BLACK_BRUSH ? handleOf<HGDIOBJ>(&stockBrush(index)) : nullptr;
}

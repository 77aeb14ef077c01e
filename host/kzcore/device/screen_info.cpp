#include "kzcore/device/screen_info.h"

#include <algorithm>
#include <cmath>

namespace {

LONG nearestPixel(double coordinate) {
    constexpr double kFarthest = 1 << 29;
    if (std::isnan(coordinate)) return 0;
    return static_cast<LONG>(std::lround(std::clamp(coordinate, -kFarthest, kFarthest)));
}

}  // namespace

AScreenInfo::AScreenInfo(double zoom) : m_zoom(zoom > 0 && std::isfinite(zoom) ? zoom : 1.0) {}

AFRect AScreenInfo::screenToDrawing(const RECT& rect) const {
    return {rect.left / m_zoom, rect.top / m_zoom, rect.right / m_zoom, rect.bottom / m_zoom};
}

RECT AScreenInfo::drawingToScreen(const AFRect& rect) const {
    return {nearestPixel(rect.left * m_zoom), nearestPixel(rect.top * m_zoom),
            nearestPixel(rect.right * m_zoom), nearestPixel(rect.bottom * m_zoom)};
}

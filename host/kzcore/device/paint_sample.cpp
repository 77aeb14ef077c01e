// The samples that brush and pen items draw of themselves. Whole pixels only, so that small pictures are the
// same on every build.
#include <algorithm>

#include "kzcore/device/device.h"
#include "kzcore/document/refer_item.h"

namespace {

AColor windowColor() {
    return AColor(GetSysColor(COLOR_WINDOW));
}

class Drawing {
public:
    explicit Drawing(ADevice& device) : m_device(device) { m_device.DrawStart(); }
    ~Drawing() { m_device.DrawEnd(); }
    Drawing(const Drawing&) = delete;
    Drawing& operator=(const Drawing&) = delete;

    void fill(const RECT& pixels, const AColor& color) {
        m_device.Fill(m_device.getScreenInfo().screenToDrawing(pixels), color);
    }

private:
    ADevice& m_device;
};

// Between two numbers; `part` from 0 to 1.
double blend(double from, double to, double part) {
    return from + (to - from) * part;
}

AColor blend(const AColor& from, const AColor& to, double part) {
    auto channel = [part](BYTE a, BYTE b) { return static_cast<BYTE>(blend(a, b, part) + 0.5); };
    COLORREF a = from.getColorRef();
    COLORREF b = to.getColorRef();
    return AColor(RGB(channel(GetRValue(a), GetRValue(b)), channel(GetGValue(a), GetGValue(b)),
                      channel(GetBValue(a), GetBValue(b))),
                  blend(from.getOpacity(), to.getOpacity(), part));
}

AColor colorAt(const std::vector<AGradientStop>& stops, double offset) {
    auto next = std::find_if(stops.begin(), stops.end(),
                             [&](const AGradientStop& stop) { return stop.offset > offset; });
    if (next == stops.begin()) return stops.front().color;
    if (next == stops.end()) return stops.back().color;
    auto before = next - 1;
    return blend(before->color, next->color, (offset - before->offset) / (next->offset - before->offset));
}

}  // namespace

void ABrushItem::drawSample(ADevice& device, const RECT& area) const {
    Drawing(device).fill(area, windowColor());
}

void ASolidBrushItem::drawSample(ADevice& device, const RECT& area) const {
    Drawing(device).fill(area, m_color != nullptr ? AColor(m_color->getDisplayColor()) : windowColor());
}

void AGradientBrushItem::drawSample(ADevice& device, const RECT& area) const {
    static const std::vector<AGradientStop> blackToWhite{{0, AColor(RGB(0, 0, 0))},
                                                         {1, AColor(RGB(255, 255, 255))}};
    const std::vector<AGradientStop>& stops = m_stops.empty() ? blackToWhite : m_stops;
    Drawing drawing(device);
    drawing.fill(area, windowColor());
    for (LONG x = area.left; x < area.right; ++x) {
        // A column shows the colour of its middle.
        double offset = (x - area.left + 0.5) / (area.right - area.left);
        drawing.fill({x, area.top, x + 1, area.bottom}, colorAt(stops, offset));
    }
}

void APatternBrushItem::drawSample(ADevice& device, const RECT& area) const {
    constexpr LONG kDistance = 4;
    const AColor line(RGB(128, 128, 128));
    Drawing drawing(device);
    drawing.fill(area, windowColor());
    for (LONG y = area.top; y < area.bottom; ++y) {
        LONG first = area.left + (area.bottom - 1 - y) % kDistance;
        for (LONG x = first; x < area.right; x += kDistance) drawing.fill({x, y, x + 1, y + 1}, line);
    }
}

void APenItem::drawSample(ADevice& device, const RECT& area) const {
    Drawing drawing(device);
    drawing.fill(area, windowColor());
    if (m_style == kStyleNone) return;
    LONG height = std::max<LONG>((area.bottom - area.top) / 3, 1);
    LONG top = area.top + (area.bottom - area.top - height) / 2;
    RECT stroke{area.left, top, area.right, top + height};
    if (m_color != nullptr) {
        drawing.fill(stroke, AColor(m_color->getDisplayColor()));
    } else if (m_brush != nullptr) {
        m_brush->drawSample(device, stroke);
    }
}

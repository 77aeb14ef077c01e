// AColor: a colour to draw with.
//
//     device.Fill(AColor(GetSysColor(COLOR_WINDOW)));
#pragma once

#include "platform/winapi.h"

class AColor {
public:
    AColor() = default;  // opaque black
    // `opacity` from 0, nothing is drawn, to 1.
    explicit AColor(COLORREF color, double opacity = 1.0) : m_color(color & 0xffffff), m_opacity(opacity) {}

    COLORREF getColorRef() const { return m_color; }
    double getOpacity() const { return m_opacity; }
    bool isOpaque() const { return m_opacity >= 1.0; }

    friend bool operator==(const AColor&, const AColor&) = default;

private:
    COLORREF m_color = 0;
    double m_opacity = 1.0;
};

struct AGradientStop {
    double offset;  // 0 to 1
    AColor color;
};

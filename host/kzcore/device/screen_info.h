// AScreenInfo: how drawing coordinates (user units, y downwards) and screen pixels belong together.
//
//     AScreenInfo screen(2.0);                                 // a user unit is two pixels wide
//     AFRect area = screen.screenToDrawing(RECT{2, 2, 16, 14});  // 1, 1 to 8, 7
//
// Both have their origin at the same place. Going to drawing coordinates and back gives the same pixels.
#pragma once

#include "kzutil/rect.h"
#include "platform/winapi.h"

class AScreenInfo {
public:
    // Pixels per user unit; anything but a positive number counts as 1.
    explicit AScreenInfo(double zoom = 1.0);

    double getZoom() const { return m_zoom; }
    AFRect screenToDrawing(const RECT& rect) const;
    // Edges go to the nearest pixel edge, and at most as far as 2^29 pixels.
    RECT drawingToScreen(const AFRect& rect) const;

private:
    double m_zoom;
};

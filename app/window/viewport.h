// Viewport: which part of a drawing a window shows, and how large.
//
//     Viewport place;
//     place.resize(800, 600);
//     place.setPage(page, 1);                 // all of it, in the middle
//     place.zoomBy(1.2, {400, 300});          // what is at this pixel stays there
//     AFPoint unit = place.toDrawing({10, 20});
//
// A zoom is the number of pixels to a user unit. Pixels of the drawing are its coordinates times the zoom; the window's
// first one is always a whole one of them, so that tiles stay sharp.
#pragma once

#include "kzutil/affine.h"
#include "platform/winapi.h"

namespace app::window {

// One axis of what can be seen, as scroll bars tell it, in pixels of the drawing.
struct ScrollRange {
    int from = 0, to = 0;  // to exclusive
    int position = 0;
    int length = 0;  // of what is seen
    friend bool operator==(const ScrollRange&, const ScrollRange&) = default;
};

class Viewport {
public:
    // The window's, in pixels. What was in its middle stays there; a page that was fitted is fitted again.
    void resize(int width, int height);
    // Shows all of another page, in user units. `fullSize`: the zoom at which it is as large as it was made.
    void setPage(const AFRect& page, double fullSize);
    // Of the same page on another screen.
    void setFullSize(double zoom) { m_fullSize = zoom; }

    void fit();
    void zoomTo(double zoom, AFPoint pixel);
    void zoomBy(double factor, AFPoint pixel) { zoomTo(m_zoom * factor, pixel); }
    void showFullSize() { zoomTo(m_fullSize, middle()); }
    // Moves what is seen; a part of the page stays in the window.
    void panBy(double x, double y);
    void scrollTo(int left, int top);

    double zoom() const { return m_zoom; }
    double percent() const { return 100 * m_zoom / m_fullSize; }
    AFPoint middle() const { return {m_width / 2.0, m_height / 2.0}; }
    int width() const { return m_width; }
    int height() const { return m_height; }
    // In pixels of the drawing.
    RECT area() const;
    // In user units.
    AFRect visible() const;
    const AFRect& page() const { return m_page; }

    AFPoint toDrawing(AFPoint pixel) const;
    AFPoint toPixel(AFPoint point) const;
    AFRect toPixels(const AFRect& rect) const;

    ScrollRange across() const;
    ScrollRange down() const;

private:
    double allowed(double zoom) const;
    void place(double left, double top);
    double fittingZoom() const;

    int m_width = 1, m_height = 1;
    AFRect m_page{0, 0, 1, 1};
    double m_fullSize = 1;
    double m_zoom = 1;
    int m_left = 0, m_top = 0;  // the window's first pixel
    bool m_fits = true;         // since nobody moved anything
};

}  // namespace app::window

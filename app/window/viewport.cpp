#include "app/window/viewport.h"

#include <algorithm>
#include <cmath>

namespace app::window {

namespace {

constexpr double kPageMargin = 24;      // around a page that is fitted
constexpr double kLeastInSight = 48;    // pixels of the page
constexpr double kFarthest = 1 << 28;   // pixels stay well within an int
constexpr double kMostEnlarged = 1024;  // times the page that fits, or the full size
constexpr double kMostReduced = 1.0 / 16;

int whole(double pixel) {
    return static_cast<int>(std::lround(std::clamp(pixel, -4 * kFarthest, 4 * kFarthest)));
}

ScrollRange rangeOf(double pageFrom, double pageTo, int position, int length) {
    const int from = std::min(position, whole(std::floor(pageFrom - kPageMargin)));
    const int to = std::max(position + length, whole(std::ceil(pageTo + kPageMargin)));
    return {from, to, position, length};
}

// The first pixel of a window of this length, so that the page stays in sight.
int firstPixel(double wanted, double pageFrom, double pageTo, int length) {
    const double kept = std::min({kLeastInSight, pageTo - pageFrom, static_cast<double>(length)});
    return whole(std::clamp(wanted, pageFrom + kept - length, pageTo - kept));
}

}  // namespace

void Viewport::resize(int width, int height) {
    const AFPoint centre = toDrawing(middle());
    m_width = std::max(1, width);
    m_height = std::max(1, height);
    if (m_fits)
        fit();
    else
        place(centre.x * m_zoom - m_width / 2.0, centre.y * m_zoom - m_height / 2.0);
}

void Viewport::setPage(const AFRect& page, double fullSize) {
    m_page = page;
    m_fullSize = fullSize;
    fit();
}

double Viewport::fittingZoom() const {
    const double width = std::max(1.0, m_width - 2 * kPageMargin);
    const double height = std::max(1.0, m_height - 2 * kPageMargin);
    return std::min(width / m_page.Width(), height / m_page.Height());
}

double Viewport::allowed(double zoom) const {
    const double fitting = fittingZoom();
    const double farthest = std::max(
        {std::fabs(m_page.left), std::fabs(m_page.right), std::fabs(m_page.top), std::fabs(m_page.bottom)});
    const double most = std::min(kMostEnlarged * std::max(fitting, m_fullSize), kFarthest / farthest);
    const double least = std::min({kMostReduced * std::min(fitting, m_fullSize), most});
    return std::clamp(zoom, least, most);
}

void Viewport::place(double left, double top) {
    m_left = firstPixel(left, m_page.left * m_zoom, m_page.right * m_zoom, m_width);
    m_top = firstPixel(top, m_page.top * m_zoom, m_page.bottom * m_zoom, m_height);
}

void Viewport::fit() {
    m_zoom = allowed(fittingZoom());
    place((m_page.left + m_page.right) / 2 * m_zoom - m_width / 2.0,
          (m_page.top + m_page.bottom) / 2 * m_zoom - m_height / 2.0);
    m_fits = true;
}

void Viewport::zoomTo(double zoom, AFPoint pixel) {
    const AFPoint point = toDrawing(pixel);
    m_zoom = allowed(zoom);
    place(point.x * m_zoom - pixel.x, point.y * m_zoom - pixel.y);
    m_fits = false;
}

void Viewport::panBy(double x, double y) {
    place(m_left + x, m_top + y);
    m_fits = false;
}

void Viewport::scrollTo(int left, int top) {
    panBy(static_cast<double>(left) - m_left, static_cast<double>(top) - m_top);
}

RECT Viewport::area() const {
    return {m_left, m_top, m_left + m_width, m_top + m_height};
}

AFRect Viewport::visible() const {
    return {m_left / m_zoom, m_top / m_zoom, (m_left + m_width) / m_zoom, (m_top + m_height) / m_zoom};
}

AFPoint Viewport::toDrawing(AFPoint pixel) const {
    return {(m_left + pixel.x) / m_zoom, (m_top + pixel.y) / m_zoom};
}

AFPoint Viewport::toPixel(AFPoint point) const {
    return {point.x * m_zoom - m_left, point.y * m_zoom - m_top};
}

AFRect Viewport::toPixels(const AFRect& rect) const {
    const AFPoint from = toPixel({rect.left, rect.top}), to = toPixel({rect.right, rect.bottom});
    return {from.x, from.y, to.x, to.y};
}

ScrollRange Viewport::across() const {
    return rangeOf(m_page.left * m_zoom, m_page.right * m_zoom, m_left, m_width);
}

ScrollRange Viewport::down() const {
    return rangeOf(m_page.top * m_zoom, m_page.bottom * m_zoom, m_top, m_height);
}

}  // namespace app::window

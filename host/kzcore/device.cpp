#include "kzcore/device.h"

#include <algorithm>
#include <cmath>

#include "kzcore/pixel_section.h"

namespace {

bool isEmpty(const RECT& rect) {
    return rect.right <= rect.left || rect.bottom <= rect.top;
}

// The pixels that an outline may touch.
RECT touched(const AFRect& bounds, double margin, const RECT& clip) {
    // Cut in floating point first: outlines may lie farther away than pixels can be counted.
    auto pixel = [](double value, LONG lowest, LONG highest) {
        double bounded = std::clamp(value, static_cast<double>(lowest), static_cast<double>(highest));
        return static_cast<LONG>(bounded);
    };
    return {pixel(std::floor(bounds.left - margin), clip.left, clip.right),
            pixel(std::floor(bounds.top - margin), clip.top, clip.bottom),
            pixel(std::ceil(bounds.right + margin), clip.left, clip.right),
            pixel(std::ceil(bounds.bottom + margin), clip.top, clip.bottom)};
}

}  // namespace

void ADevice::DrawEnd() {
    if (m_drawing > 0 && --m_drawing == 0) GdiFlush();
}

RECT ADevice::contextRect(const AFRect& rect) const {
    RECT pixels = m_screen.drawingToScreen(rect);
    return {pixels.left - m_origin.x, pixels.top - m_origin.y, pixels.right - m_origin.x,
            pixels.bottom - m_origin.y};
}

void ADevice::fillContext(const RECT& rect, const AColor& color) {
    CBrush brush(color.getColorRef());
    HGDIOBJ before = ::SelectObject(m_context, brush);
    if (before == nullptr) return;
    ::PatBlt(m_context, rect.left, rect.top, rect.right - rect.left, rect.bottom - rect.top, PATCOPY);
    ::SelectObject(m_context, before);
}

void ADevice::Fill(const AColor& color) {
    RECT all{};
    ::GetClipBox(m_context, &all);
    Fill(m_screen.screenToDrawing(
             {all.left + m_origin.x, all.top + m_origin.y, all.right + m_origin.x, all.bottom + m_origin.y}),
         color);
}

void ADevice::Fill(const AFRect& rect, const AColor& color) {
    RECT pixels = contextRect(rect);
    if (isEmpty(pixels)) return;
    if (color.isOpaque()) return fillContext(pixels, color);
    // Mixed by the drawing library, but on whole pixels all the same.
    FillPath(APath::rectangle(m_screen.screenToDrawing(m_screen.drawingToScreen(rect))), color);
}

void ADevice::CopyBits(const AFRect& target, const ADevice& source, const AFRect& from, DWORD operation) {
    RECT to = contextRect(target);
    RECT read = source.contextRect(from);
    if (isEmpty(to)) return;
    ::BitBlt(m_context, to.left, to.top, to.right - to.left, to.bottom - to.top, source.m_context, read.left,
             read.top, operation);
}

// The drawing library cannot reach the pixels of an arbitrary context: the part that the outline may touch is
// taken into a section, drawn on there and put back.
template <class Draw>
void ADevice::drawPath(const APath& path, double margin, Draw draw) {
    APath outline = path.scaled(m_screen.getZoom(), -m_origin.x, -m_origin.y);
    if (outline.empty() || !outline.isFinite()) return;
    if (APixelSection* own = getSection()) return draw(own->getPixels(), outline);
    RECT clip{};
    ::GetClipBox(m_context, &clip);
    RECT area = touched(outline.bounds(), margin, clip);
    int width = area.right - area.left;
    int height = area.bottom - area.top;
    APixelSection section(width, height);
    if (!section.isValid()) return;
    ::BitBlt(section.getContext(), 0, 0, width, height, m_context, area.left, area.top, SRCCOPY);
    draw(section.getPixels(), outline.scaled(1, -area.left, -area.top));
    ::BitBlt(m_context, area.left, area.top, width, height, section.getContext(), 0, 0, SRCCOPY);
}

void ADevice::FillPath(const APath& path, const AColor& color, EFillRule rule) {
    drawPath(path, 1,
             [&](const APixels& pixels, const APath& outline) { fillPixels(pixels, outline, color, rule); });
}

void ADevice::StrokePath(const APath& path, const AColor& color, double width) {
    double pixelWidth = width * m_screen.getZoom();
    if (!(pixelWidth > 0) || !std::isfinite(pixelWidth)) return;
    // A miter reaches as far as twice the width.
    drawPath(path, pixelWidth * 2 + 1, [&](const APixels& pixels, const APath& outline) {
        strokePixels(pixels, outline, color, pixelWidth);
    });
}

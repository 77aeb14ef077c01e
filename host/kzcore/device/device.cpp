#include "kzcore/device/device.h"

#include <algorithm>
#include <cmath>
#include <new>

#include "kzcore/device/pixel_section.h"

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

// On the device's own pixels, or on a copy of the context's.
struct ADevice::OpenCanvas {
    std::unique_ptr<APixelSection> copy;
    RECT area;  // of the copy, to be put back
    ACanvas canvas;
};

ADevice::ADevice(HDC context, const AScreenInfo& screen, POINT origin)
    : m_context(context), m_screen(screen), m_origin(origin) {}

ADevice::~ADevice() {
    closeCanvas();
}

void ADevice::DrawEnd() {
    if (m_drawing == 0 || --m_drawing > 0) return;
    closeCanvas();
    GdiFlush();
}

ACanvas& ADevice::canvas() {
    if (m_canvas) return m_canvas->canvas;
    if (APixelSection* own = getSection()) {
        m_canvas.reset(new OpenCanvas{nullptr, {}, ACanvas(own->getPixels())});
        return m_canvas->canvas;
    }
    RECT clip{};
    ::GetClipBox(m_context, &clip);
    // From the context's first pixel, so that the canvas counts as the context does.
    const int width = std::max<LONG>(clip.right, 1);
    const int height = std::max<LONG>(clip.bottom, 1);
    auto copy = std::make_unique<APixelSection>(width, height);
    if (!copy->isValid()) throw std::bad_alloc();
    ::BitBlt(copy->getContext(), 0, 0, width, height, m_context, 0, 0, SRCCOPY);
    const APixels pixels = copy->getPixels();
    m_canvas.reset(new OpenCanvas{std::move(copy), clip, ACanvas(pixels)});
    m_canvas->canvas.pushClip(
        APath::rectangle({static_cast<double>(clip.left), static_cast<double>(clip.top),
                          static_cast<double>(clip.right), static_cast<double>(clip.bottom)}),
        AAffine(), EFillRule::nonZero);
    return m_canvas->canvas;
}

void ADevice::closeCanvas() const {
    if (!m_canvas) return;
    const std::unique_ptr<OpenCanvas> closing = std::move(m_canvas);
    closing->canvas.flush();
    if (!closing->copy) return;
    const RECT& area = closing->area;
    ::BitBlt(m_context, area.left, area.top, area.right - area.left, area.bottom - area.top,
             closing->copy->getContext(), area.left, area.top, SRCCOPY);
}

AAffine ADevice::toPixels() const {
    return AAffine::translation(-m_origin.x, -m_origin.y) * AAffine::scaling(m_screen.getZoom());
}

RECT ADevice::contextRect(const AFRect& rect) const {
    RECT pixels = m_screen.drawingToScreen(rect);
    return {pixels.left - m_origin.x, pixels.top - m_origin.y, pixels.right - m_origin.x,
            pixels.bottom - m_origin.y};
}

void ADevice::fillContext(const RECT& rect, const AColor& color) {
    closeCanvas();
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
    closeCanvas();
    source.closeCanvas();
    ::BitBlt(m_context, to.left, to.top, to.right - to.left, to.bottom - to.top, source.m_context, read.left,
             read.top, operation);
}

// The drawing library cannot reach the pixels of an arbitrary context: without an open canvas, the part that
// the outline may touch is taken into a section, drawn on there and put back.
template <class Draw>
void ADevice::drawPath(const APath& path, double margin, Draw draw) {
    if (m_canvas) return draw(m_canvas->canvas, toPixels());
    APath outline = path.scaled(m_screen.getZoom(), -m_origin.x, -m_origin.y);
    if (outline.empty() || !outline.isFinite()) return;
    if (APixelSection* own = getSection()) {
        ACanvas canvas(own->getPixels());
        return draw(canvas, toPixels());
    }
    RECT clip{};
    ::GetClipBox(m_context, &clip);
    RECT area = touched(outline.bounds(), margin, clip);
    int width = area.right - area.left;
    int height = area.bottom - area.top;
    APixelSection section(width, height);
    if (!section.isValid()) return;
    ::BitBlt(section.getContext(), 0, 0, width, height, m_context, area.left, area.top, SRCCOPY);
    {
        ACanvas canvas(section.getPixels());
        draw(canvas, AAffine::translation(-area.left, -area.top) * toPixels());
    }
    ::BitBlt(m_context, area.left, area.top, width, height, section.getContext(), 0, 0, SRCCOPY);
}

void ADevice::FillPath(const APath& path, const AColor& color, EFillRule rule) {
    drawPath(path, 1, [&](ACanvas& canvas, const AAffine& toPixels) {
        canvas.fill(path, toPixels, APaint{color}, rule);
    });
}

void ADevice::StrokePath(const APath& path, const AColor& color, double width) {
    AStrokeStyle style;
    style.width = width;
    // A miter reaches as far as half the width as often as its limit.
    const double reach = width * m_screen.getZoom() / 2 * style.miterLimit;
    if (!(reach > 0) || !std::isfinite(reach)) return;
    drawPath(path, reach + 1, [&](ACanvas& canvas, const AAffine& toPixels) {
        canvas.stroke(path, toPixels, APaint{color}, style);
    });
}

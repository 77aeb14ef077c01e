#include "kzcore/canvas.h"

#include <algorithm>
#include <cmath>

// <gdiplus.h> takes min and max from where it stands.
using std::max;
using std::min;

#include <objidl.h>

#include <gdiplus.h>

namespace {

// Never shut down: devices may be used until the process ends, and a library must not shut GDI+ down on
// detach.
void ensureStarted() {
    static const ULONG_PTR token = [] {
        ULONG_PTR started = 0;
        Gdiplus::GdiplusStartupInput input;
        Gdiplus::GdiplusStartup(&started, &input, nullptr);
        return started;
    }();
    static_cast<void>(token);
}

struct Canvas {
    explicit Canvas(const APixels& pixels)
        : bitmap(pixels.width, pixels.height, pixels.width * 4, PixelFormat32bppRGB,
                 static_cast<BYTE*>(pixels.bits)),
          graphics(&bitmap) {
        graphics.SetSmoothingMode(Gdiplus::SmoothingModeAntiAlias);
        // Pixel edges at whole numbers, as in device coordinates everywhere else.
        graphics.SetPixelOffsetMode(Gdiplus::PixelOffsetModeHalf);
    }

    Gdiplus::Bitmap bitmap;
    Gdiplus::Graphics graphics;
};

Gdiplus::PointF pointOf(const AFPoint& point) {
    return {static_cast<float>(point.x), static_cast<float>(point.y)};
}

void trace(Gdiplus::GraphicsPath& target, const APath& path) {
    const AFPoint* point = path.points().data();
    Gdiplus::PointF start;
    Gdiplus::PointF current;
    for (APath::EVerb verb : path.verbs()) {
        switch (verb) {
            case APath::EVerb::move:
                target.StartFigure();
                start = current = pointOf(*point++);
                break;
            case APath::EVerb::line: {
                Gdiplus::PointF to = pointOf(*point++);
                target.AddLine(current, to);
                current = to;
                break;
            }
            case APath::EVerb::curve:
                target.AddBezier(current, pointOf(point[0]), pointOf(point[1]), pointOf(point[2]));
                current = pointOf(point[2]);
                point += 3;
                break;
            case APath::EVerb::close:
                target.CloseFigure();
                current = start;
                break;
        }
    }
}

Gdiplus::Color colorOf(const AColor& color) {
    COLORREF value = color.getColorRef();
    double opacity = std::clamp(color.getOpacity(), 0.0, 1.0);
    return {static_cast<BYTE>(std::lround(opacity * 255)), GetRValue(value), GetGValue(value),
            GetBValue(value)};
}

}  // namespace

void fillPixels(const APixels& pixels, const APath& path, const AColor& color, EFillRule rule) {
    ensureStarted();
    Canvas canvas(pixels);
    Gdiplus::GraphicsPath outline(rule == EFillRule::evenOdd ? Gdiplus::FillModeAlternate
                                                             : Gdiplus::FillModeWinding);
    trace(outline, path);
    Gdiplus::SolidBrush brush(colorOf(color));
    canvas.graphics.FillPath(&brush, &outline);
}

void strokePixels(const APixels& pixels, const APath& path, const AColor& color, double width) {
    ensureStarted();
    Canvas canvas(pixels);
    Gdiplus::GraphicsPath outline;
    trace(outline, path);
    Gdiplus::Pen pen(colorOf(color), static_cast<float>(width));
    pen.SetLineJoin(Gdiplus::LineJoinMiterClipped);
    pen.SetMiterLimit(4);
    canvas.graphics.DrawPath(&pen, &outline);
}

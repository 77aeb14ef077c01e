// ADevice: something to draw on, in drawing coordinates.
//
//     AScreenInfo screen(1.0);
//     ADevice device(memory, screen);  // `memory` stays the caller's
//     device.DrawStart();
//     device.Fill(screen.screenToDrawing(RECT{3, 3, 16, 14}), AColor(RGB(255, 0, 0)));
//     device.DrawEnd();
//
// Drawing belongs between DrawStart and DrawEnd; once the outermost DrawEnd is through, everybody who
// reads the context's bitmap sees the picture. What Fill and CopyBits touch are whole pixels, exactly;
// paths are antialiased. Everything is cut at the device's edges. Offscreen devices come from the
// device manager (device_mgr.h).
#pragma once

#include <memory>

#include "canvas/canvas.h"
#include "kzcore/device/screen_info.h"

class APixelSection;

class ADevice {
public:
    // Draws on the context, which must outlive the device; its origin is the origin of the drawing.
    ADevice(HDC context, const AScreenInfo& screen) : ADevice(context, screen, POINT{0, 0}) {}
    virtual ~ADevice();
    ADevice(const ADevice&) = delete;
    ADevice& operator=(const ADevice&) = delete;

    HDC getContext() const { return m_context; }
    const AScreenInfo& getScreenInfo() const { return m_screen; }

    // They nest.
    void DrawStart() { ++m_drawing; }
    void DrawEnd();

    // The whole device.
    void Fill(const AColor& color);
    void Fill(const AFRect& rect, const AColor& color);
    // Copies what lies at the source's rectangle; the target rectangle tells the size. SRCCOPY is
    // the raster operation.
    void CopyBits(const AFRect& target, const ADevice& source, const AFRect& from, DWORD operation);
    void FillPath(const APath& path, const AColor& color, EFillRule rule = EFillRule::nonZero);
    // The width is in drawing units.
    void StrokePath(const APath& path, const AColor& color, double width);

    // For everything else that can be drawn, in pixels of the context. It holds until a whole-pixel operation
    // or the outermost DrawEnd, behind which the context has what was drawn. Raises bad_alloc.
    ACanvas& canvas();

protected:
    // `origin`: the screen pixel that the context's first pixel stands for.
    ADevice(HDC context, const AScreenInfo& screen, POINT origin);

    // Puts what was drawn on the canvas into the context. A device that owns its section does it
    // before that goes.
    void closeCanvas() const;

private:
    struct OpenCanvas;

    // The pixels behind the context, when the device owns them.
    virtual APixelSection* getSection() { return nullptr; }
    RECT contextRect(const AFRect& rect) const;
    void fillContext(const RECT& rect, const AColor& color);
    AAffine toPixels() const;
    template <class Draw>
    void drawPath(const APath& path, double margin, Draw draw);

    HDC m_context;
    AScreenInfo m_screen;
    POINT m_origin;
    int m_drawing = 0;
    // What a context shows includes what is still on its canvas, so whoever reads it puts that back.
    mutable std::unique_ptr<OpenCanvas> m_canvas;
};

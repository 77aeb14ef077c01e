// A bitmap whose pixels both the device context and the drawing library reach.
#pragma once

#include "canvas/canvas.h"
#include "platform/afx/gdi.h"

class APixelSection {
public:
    // Black. False in isValid when there is no memory for it, or nothing to hold.
    APixelSection(int width, int height);
    ~APixelSection();
    APixelSection(const APixelSection&) = delete;
    APixelSection& operator=(const APixelSection&) = delete;

    bool isValid() const { return m_before != nullptr; }
    HDC getContext() const { return m_context; }
    // What was drawn through the context is in the pixels from here on.
    APixels getPixels();

private:
    CDC m_context;
    CBitmap m_bitmap;
    HGDIOBJ m_before = nullptr;
    APixels m_pixels;
};

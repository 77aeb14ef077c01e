#include "kzcore/device/pixel_section.h"

APixelSection::APixelSection(int width, int height) {
    if (width <= 0 || height <= 0 || !m_context.CreateCompatibleDC(nullptr)) return;
    BITMAPINFO info{};
    info.bmiHeader.biSize = sizeof info.bmiHeader;
    info.bmiHeader.biWidth = width;
    info.bmiHeader.biHeight = -height;
    info.bmiHeader.biPlanes = 1;
    info.bmiHeader.biBitCount = 32;
    info.bmiHeader.biCompression = BI_RGB;
    void* bits = nullptr;
    if (!m_bitmap.Attach(CreateDIBSection(m_context, &info, DIB_RGB_COLORS, &bits, nullptr, 0))) return;
    m_pixels = {bits, width, height};
    m_before = m_context.SelectObject(m_bitmap);
}

APixelSection::~APixelSection() {
    if (m_before != nullptr) m_context.SelectObject(m_before);
}

APixels APixelSection::getPixels() {
    GdiFlush();
    return m_pixels;
}

#include "canvas/image.h"

#include <new>

#include "canvas/canvas.h"

AImage::AImage(int width, int height) {
    if (width <= 0 || height <= 0) return;
    const std::size_t count = static_cast<std::size_t>(width) * static_cast<std::size_t>(height);
    if (count > kMostPixels) throw std::bad_alloc();
    m_pixels.resize(count);
    m_width = width;
    m_height = height;
}

APixels pixelsOf(AImage& image) {
    return {image.pixels().data(), image.width(), image.height(), true};
}

#include "canvas/image.h"

#include <algorithm>
#include <new>

#include "canvas/canvas.h"
#include "canvas/image_codecs.h"

namespace {

bool startsWith(std::span<const unsigned char> bytes, std::initializer_list<unsigned char> start) {
    return bytes.size() >= start.size() && std::equal(start.begin(), start.end(), bytes.begin());
}

}  // namespace

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

AImage decodeImage(std::span<const unsigned char> bytes) {
    if (startsWith(bytes, {0x89, 'P', 'N', 'G', '\r', '\n', 0x1a, '\n'})) return decodePng(bytes);
    if (startsWith(bytes, {0xff, 0xd8, 0xff})) return decodeJpeg(bytes);
    if (startsWith(bytes, {'G', 'I', 'F', '8'})) return decodeGif(bytes);
    if (startsWith(bytes, {'R', 'I', 'F', 'F'}) &&
        startsWith(bytes.subspan(std::min<std::size_t>(8, bytes.size())), {'W', 'E', 'B', 'P'}))
        return decodeWebp(bytes);
    return {};
}

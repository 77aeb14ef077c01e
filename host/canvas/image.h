// AImage: a picture in memory, with transparency.
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <vector>

// A pixel is 0xAARRGGBB, its colour multiplied by its alpha; rows without gaps, top row first.
class AImage {
public:
    AImage() = default;
    // Transparent. Empty when a side is not positive. Raises bad_alloc; more than kMostPixels count as that.
    AImage(int width, int height);

    static constexpr std::size_t kMostPixels = std::size_t{1} << 28;

    int width() const { return m_width; }
    int height() const { return m_height; }
    bool empty() const { return m_pixels.empty(); }

    std::uint32_t at(int x, int y) const { return m_pixels[index(x, y)]; }
    std::uint32_t& at(int x, int y) { return m_pixels[index(x, y)]; }
    std::uint32_t* row(int y) { return &m_pixels[index(0, y)]; }
    const std::uint32_t* row(int y) const { return &m_pixels[index(0, y)]; }
    std::vector<std::uint32_t>& pixels() { return m_pixels; }
    const std::vector<std::uint32_t>& pixels() const { return m_pixels; }

private:
    std::size_t index(int x, int y) const {
        return static_cast<std::size_t>(y) * static_cast<std::size_t>(m_width) + static_cast<std::size_t>(x);
    }

    int m_width = 0;
    int m_height = 0;
    std::vector<std::uint32_t> m_pixels;
};

// The bytes of a PNG file of the image. Raises bad_alloc.
std::string encodePng(const AImage& image);

// Reads the bytes of a PNG, JPEG, GIF or WebP file; of an animation the first picture. Empty for anything else, for damaged bytes and for more than kMostPixels.
AImage decodeImage(std::span<const unsigned char> bytes);

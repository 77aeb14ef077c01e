// Draws drawings and looks at the pixels.
//
//     const Picture picture = drawBody("<rect width='10' height='10' fill='red'/>");
//     EXPECT_COLOR(picture, 5, 5, 0xff0000);
#pragma once

#include <gtest/gtest.h>

#include <cstdint>
#include <string>
#include <vector>

#include "kzcore/document/document.h"
#include "kzutil/affine.h"

class AViewFilter;

namespace svg_test {

constexpr std::uint32_t kWhite = 0xffffff;
constexpr std::uint32_t kRed = 0xff0000;
constexpr std::uint32_t kLime = 0x00ff00;
constexpr std::uint32_t kBlue = 0x0000ff;

class Picture {
public:
    // What a view of the document draws on white, 200 by 100 pixels. Takes over the view's filter.
    explicit Picture(ADocument& document, const AAffine& toPixels = {}, AViewFilter* filter = nullptr);
    Picture(ADocument& document, AViewFilter* filter) : Picture(document, {}, filter) {}

    static constexpr int kWidth = 200;
    static constexpr int kHeight = 100;

    // 0xRRGGBB.
    std::uint32_t at(int x, int y) const {
        return m_pixels[static_cast<std::size_t>(y * kWidth + x)] & 0xffffff;
    }
    friend bool operator==(const Picture&, const Picture&) = default;

private:
    std::vector<std::uint32_t> m_pixels;
};

// A body (see drawing() in support.h), a user unit to the pixel.
Picture drawBody(const std::string& body);

// A rectangle of 100 by 80 from 20, 10.
std::string box(const std::string& attributes);

// Whether a pixel has a colour, give or take a little for what is mixed.
testing::AssertionResult hasColor(const Picture& picture, int x, int y, std::uint32_t rgb, int tolerance = 3);

}  // namespace svg_test

#define EXPECT_COLOR(picture, x, y, rgb) EXPECT_TRUE(svg_test::hasColor(picture, x, y, rgb))

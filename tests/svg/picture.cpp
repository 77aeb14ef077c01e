#include "picture.h"

#include <cstdio>
#include <cstdlib>

#include "kzcore/device/device.h"
#include "kzcore/device/pixel_section.h"
#include "kzcore/view/view.h"
#include "support.h"

namespace svg_test {

Picture::Picture(ADocument& document, const AAffine& toPixels, AViewFilter* filter) {
    ADocView view(document);
    view.setViewFilter(filter);
    APixelSection section(kWidth, kHeight);
    ADevice device(section.getContext(), AScreenInfo(1.0));
    device.Fill(AColor(RGB(255, 255, 255)));
    view.draw(device, toPixels);
    const auto* const bits = static_cast<const std::uint32_t*>(section.getPixels().bits);
    m_pixels.assign(bits, bits + kWidth * kHeight);
    for (std::uint32_t& pixel : m_pixels) pixel &= 0xffffff;
}

Picture drawBody(const std::string& body) {
    return Picture(*readBody(body));
}

std::string box(const std::string& attributes) {
    return "<rect x='20' y='10' width='100' height='80' " + attributes + "/>";
}

testing::AssertionResult hasColor(const Picture& picture, int x, int y, std::uint32_t rgb, int tolerance) {
    const std::uint32_t found = picture.at(x, y);
    for (const int shift : {0, 8, 16}) {
        const int difference =
            static_cast<int>(found >> shift & 0xff) - static_cast<int>(rgb >> shift & 0xff);
        if (std::abs(difference) > tolerance) {
            char text[64];
            std::snprintf(text, sizeof text, "at %d, %d: %06x instead of %06x", x, y,
                          static_cast<unsigned>(found), static_cast<unsigned>(rgb));
            return testing::AssertionFailure() << text;
        }
    }
    return testing::AssertionSuccess();
}

}  // namespace svg_test

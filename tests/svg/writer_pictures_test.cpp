// Random drawings: written under a filter, read again and drawn without one, they look as the view did.
#include <gtest/gtest.h>

#include <algorithm>

#include "filter.h"
#include "formats/svg/writer.h"
#include "kzcore/device/device.h"
#include "kzcore/device/pixel_section.h"
#include "kzcore/view/view.h"
#include "random_drawing.h"
#include "support.h"

using svg_test::HideByName;

namespace {

class Device : public ADevice {
public:
    explicit Device(APixelSection& section)
        : ADevice(section.getContext(), AScreenInfo(1.0)), m_section(section) {}
    ~Device() override { closeCanvas(); }

private:
    APixelSection* getSection() override { return &m_section; }

    APixelSection& m_section;
};

std::vector<std::uint32_t> picture(const ADocView& view) {
    APixelSection section(200, 100);
    Device device(section);
    device.Fill(AColor(RGB(255, 255, 255)));
    view.draw(device, AAffine());
    const auto* pixels = static_cast<const std::uint32_t*>(section.getPixels().bits);
    return {pixels, pixels + 200 * 100};
}

int largestDifference(const std::vector<std::uint32_t>& a, const std::vector<std::uint32_t>& b) {
    int largest = 0;
    for (std::size_t i = 0; i < a.size(); ++i) {
        for (int shift = 0; shift < 24; shift += 8) {
            const int one = static_cast<int>(a[i] >> shift & 255) - static_cast<int>(b[i] >> shift & 255);
            largest = std::max(largest, one < 0 ? -one : one);
        }
    }
    return largest;
}

}  // namespace

TEST(WriterPictures, TheWrittenDrawingLooksAsTheViewDid) {
    int changed = 0;
    for (unsigned seed = 1; seed <= 60; ++seed) {
        std::mt19937 random(seed);
        const std::string text = svg_test::randomDrawing(random);
        const auto document = svg_test::readText(text);
        ADocView shown(*document);
        const std::vector<std::uint32_t> before = picture(shown);
        shown.setViewFilter(new HideByName(svg_test::randomColors(random)));
        const std::vector<std::uint32_t> view = picture(shown);
        changed += view != before ? 1 : 0;
        std::string error;
        const auto bytes = svg::writeDrawing(*document, shown.m_viewFilter, error);
        ASSERT_TRUE(bytes) << error;
        const auto again = svg_test::readText(*bytes);
        ASSERT_LE(largestDifference(picture(ADocView(*again)), view), 2) << "seed " << seed << '\n'
                                                                         << text << "\nwritten:\n"
                                                                         << *bytes;
    }
    EXPECT_GT(changed, 40);
}

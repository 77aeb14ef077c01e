#include "display/pictures.h"

#include "kzcore/device/device.h"
#include "kzcore/device/pixel_section.h"

namespace display_test {

int RefusingFilter::isVisible(AReferItem* item) {
    const AReferItem* color = item;
    if (const auto* const solid = dynamic_cast<ASolidBrushItem*>(item)) color = solid->getColorItem();
    if (const auto* const pen = dynamic_cast<APenItem*>(item); pen && pen->getColorItem())
        color = pen->getColorItem();
    return m_refused.count(color->getName().toUtf8()) == 0;
}

Shown::Shown(const std::string& text, AViewFilter* filter)
    : document(svg_test::readText(text)),
      view(std::make_unique<ADocView>(*document)),
      list(makeDisplayList(*document)) {
    view->setViewFilter(filter);
    if (filter) shown = AShownPaint(*list, [&](AReferItem* item) { return filter->isVisible(item) != 0; });
}

AImage Shown::drawnDirectly(const AAffine& toPixels) const {
    APixelSection section(kWidth, kHeight);
    ADevice device(section.getContext(), AScreenInfo(1.0));
    device.Fill(AColor(RGB(255, 255, 255)));
    view->draw(device, toPixels);
    AImage image(kWidth, kHeight);
    const auto* const bits = static_cast<const std::uint32_t*>(section.getPixels().bits);
    for (std::size_t i = 0; i < image.pixels().size(); ++i) image.pixels()[i] = bits[i] & 0xffffff;
    return image;
}

AImage Shown::drawnFromList(const AAffine& toPixels) const {
    AImage image(kWidth, kHeight);
    std::fill(image.pixels().begin(), image.pixels().end(), 0xffffff);
    APixels pixels = pixelsOf(image);
    pixels.hasAlpha = false;
    {
        ACanvas canvas(pixels);
        ADisplayDrawing(*list, shown, toPixels).draw(canvas);
    }
    for (std::uint32_t& pixel : image.pixels()) pixel &= 0xffffff;
    return image;
}

std::size_t differentPixels(const AImage& a, const AImage& b, int difference) {
    std::size_t count = 0;
    for (std::size_t i = 0; i < a.pixels().size(); ++i) {
        bool differs = false;
        for (const int shift : {0, 8, 16}) {
            const int one = static_cast<int>(a.pixels()[i] >> shift & 255) -
                            static_cast<int>(b.pixels()[i] >> shift & 255);
            differs |= one > difference || -one > difference;
        }
        count += differs ? 1 : 0;
    }
    return count;
}

}  // namespace display_test

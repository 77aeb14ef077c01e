#include "formats/svg/style/gradient_stop.h"

#include <algorithm>

#include "formats/svg/values/color.h"
#include "formats/svg/values/text_scan.h"
#include "formats/svg/values/units.h"

namespace svg {

AColor stopColor(const Style& style) {
    const Paint& paint = style.own.stopColor;
    std::uint32_t rgb = 0;
    double opacity = style.own.stopOpacity;
    switch (paint.kind) {
        case PaintKind::rgb:
            rgb = paint.rgb;
            opacity *= paint.alpha / 255.0;
            break;
        case PaintKind::currentColor:
            rgb = style.color;
            break;
        case PaintKind::cmyk: {
            std::array<float, 4> cmyk{};
            std::string_view text = paint.text;
            takeCmyk(text, cmyk);
            rgb = cmykToRgb(cmyk);
            break;
        }
        default:
            opacity = 0;
            break;
    }
    return AColor(RGB(rgb >> 16 & 0xff, rgb >> 8 & 0xff, rgb & 0xff), opacity);
}

// A number or a percentage; 0 for anything else.
static double offsetOf(std::string_view text) {
    double offset = 0;
    text = trim(text);
    if (!takeNumber(text, offset)) return 0;
    return text.empty() ? offset : text == "%" ? offset / 100 : 0;
}

AGradientStop gradientStop(pugi::xml_node stop, const Style& style, double before) {
    const double offset = offsetOf(stop.attribute("offset").value());
    return {std::clamp(offset, before, 1.0), stopColor(style)};
}

}  // namespace svg

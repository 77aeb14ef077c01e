#include "formats/svg/style/gradient_stop.h"

#include <algorithm>

#include "formats/svg/values/color.h"
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

AGradientStop gradientStop(pugi::xml_node stop, const Style& style, double before) {
    double offset = 0;
    parseLength(stop.attribute("offset").value(), Axis::horizontal, {kUsualFontSize, 1, 1}, offset);
    return {std::clamp(offset, before, 1.0), stopColor(style)};
}

}  // namespace svg

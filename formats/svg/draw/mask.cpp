#include "formats/svg/draw/mask.h"

#include "formats/svg/draw/compositing.h"
#include "formats/svg/draw/context/bounding_box.h"
#include "formats/svg/draw/filter/filter_pixels.h"

namespace svg {

namespace {

bool usesBox(pugi::xml_node mask, const char* attribute, bool otherwise) {
    const std::string_view text = textOf(mask, attribute);
    return text.empty() ? otherwise : text == "objectBoundingBox";
}

// The luminance of what is painted, from 0 to 255: colours are multiplied by their alpha already.
std::uint32_t luminance(std::uint32_t pixel) {
    const std::uint32_t r = pixel >> 16 & 0xff;
    const std::uint32_t g = pixel >> 8 & 0xff;
    const std::uint32_t b = pixel & 0xff;
    return (13933 * r + 46871 * g + 4732 * b + 0x8000) >> 16;
}

std::uint32_t multiplied(std::uint32_t pixel, std::uint32_t by) {
    const auto part = [by](std::uint32_t value) {
        const std::uint32_t product = value * by + 128;
        return (product + (product >> 8)) >> 8;
    };
    return part(pixel >> 24) << 24 | part(pixel >> 16 & 0xff) << 16 | part(pixel >> 8 & 0xff) << 8 |
           part(pixel & 0xff);
}

template <class Coverage>
void multiplyBy(AImage& image, const AImage& picture, Coverage coverage) {
    for (std::size_t i = 0; i < image.pixels().size(); ++i) {
        std::uint32_t& pixel = image.pixels()[i];
        if (pixel != 0) pixel = multiplied(pixel, coverage(picture.pixels()[i]));
    }
}

void paintMask(DrawContext& context, const DrawnElement& mask, const AFRect& box, const AFRect& region) {
    context.pushClip(APath::rectangle(region), mask.space.toDrawing, EFillRule::nonZero);
    UserSpace content = mask.space;
    AAffine units;
    if (!usesBox(mask.node, "maskContentUnits", false)) {
        context.paintChildren(mask.node, mask.style, content);
    } else if (boxUnits(box, units)) {
        content.toDrawing = content.toDrawing * units;
        content.width = content.height = 1;
        context.paintChildren(mask.node, mask.style, content);
    }
    context.popClip();
}

}  // namespace

bool maskNeedsBox(pugi::xml_node mask) {
    return usesBox(mask, "maskUnits", true) || usesBox(mask, "maskContentUnits", false);
}

bool maskRegion(DrawContext&, pugi::xml_node mask, const UserSpace& space, const AFRect& box,
                AFRect& region) {
    const bool inBox = usesBox(mask, "maskUnits", true);
    AAffine units;
    if (inBox && !boxUnits(box, units)) return false;
    const LengthContext context{kUsualFontSize, inBox ? 1 : space.width, inBox ? 1 : space.height};
    const auto get = [&](const char* attribute, Axis axis, double share) {
        double value = share * (axis == Axis::horizontal ? context.viewportWidth : context.viewportHeight);
        parseLength(textOf(mask, attribute), axis, context, value);
        return value;
    };
    const double x = get("x", Axis::horizontal, -0.1);
    const double y = get("y", Axis::vertical, -0.1);
    const double width = get("width", Axis::horizontal, 1.2);
    const double height = get("height", Axis::vertical, 1.2);
    if (!(width > 0 && height > 0)) return false;
    region = rectBounds(inBox ? units : AAffine(), {x, y, x + width, y + height});
    return true;
}

void maskImage(DrawContext& context, pugi::xml_node mask, const UserSpace& space, const AFRect& box,
               AImage& image) {
    // Masks in themselves, or far too many: the image stays as it is.
    const DrawContext::Visit visit(context, mask);
    DrawContext::HeldPixels held(context);
    constexpr double kSteps = 4;
    if (!visit || !held.take(image.pixels().size()) ||
        !context.spendPixels(kSteps * static_cast<double>(image.pixels().size()))) {
        return;
    }
    AImage picture(image.width(), image.height());
    AFRect region;
    bool alpha = false;
    bool linear = false;
    if (maskRegion(context, mask, space, box, region)) {
        ACanvas canvas(pixelsOf(picture));
        const DrawContext::OnCanvas on(context, canvas);
        AttributeSet attributes;
        attributes.read(mask);
        Style style = context.styleAt(mask);
        alpha = style.own.alphaMask;
        linear = style.linearColors;
        // Filters do not apply to masks.
        style.own.filter = {};
        // A mask may be masked and clipped itself, in the same user space.
        const DrawnElement element{mask, attributes, style, space};
        BoundingBox known(box);
        Compositing compositing(context);
        if (compositing.begin(element, known, nullptr, 1)) {
            paintMask(context, {mask, attributes, style, compositing.space()}, box, region);
            compositing.end();
        }
    }
    if (linear && !alpha) convertToLinear(picture);
    if (alpha) {
        multiplyByAlpha(image, picture);
    } else {
        multiplyBy(image, picture, luminance);
    }
}

void multiplyByAlpha(AImage& image, const AImage& coverage) {
    multiplyBy(image, coverage, [](std::uint32_t pixel) { return pixel >> 24; });
}

}  // namespace svg

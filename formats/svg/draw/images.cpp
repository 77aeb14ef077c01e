// An SVG drawing in a data URI is drawn from the budgets of the picture that it stands in; one within such a drawing
// is not drawn.
#include "formats/svg/draw/images.h"

#include "formats/svg/draw/context/pixel_area.h"
#include "formats/svg/draw/picture_cache.h"

namespace svg {

namespace {

constexpr double kLeastScale = 1e-9;

// Width and height as written; one that is missing follows the picture.
AFRect viewportOf(const DrawnElement& element, AFPoint size) {
    const AttributeSet& attributes = element.attributes;
    const LengthContext lengths{element.style.fontSize, element.space.width, element.space.height};
    const double x = length(attributes, Attribute::x, Axis::horizontal, lengths);
    const double y = length(attributes, Attribute::y, Axis::vertical, lengths);
    double width = length(attributes, Attribute::width, Axis::horizontal, lengths, -1);
    double height = length(attributes, Attribute::height, Axis::vertical, lengths, -1);
    if (width < 0 && height < 0) {
        width = size.x;
        height = size.y;
    }
    if (width < 0) width = height * size.x / size.y;
    if (height < 0) height = width * size.y / size.x;
    return {x, y, x + width, y + height};
}

// A picture is drawn at the resolution of the one around it; a list holds only where it lies.
void recordPicture(DrawContext& context, const AFRect& viewport, const UserSpace& space) {
    if (viewport.IsRectEmpty()) return;
    context.recorder()->openPicture();
    context.recorder()->fill(APath::rectangle(viewport), space.toDrawing, APaint(), EFillRule::nonZero);
    context.recorder()->close();
}

bool isSeen(DrawContext& context) {
    const RECT& clip = context.clipBounds();
    return clip.left < clip.right && clip.top < clip.bottom;
}

// Draws into an image first, so that opacity and blending are those of a picture.
void drawInner(DrawContext& context, InnerDrawing& drawing, const AAffine& toPixels, const RECT& area,
               const UriPicture& picture) {
    const auto pixels =
        static_cast<std::size_t>(area.right - area.left) * static_cast<std::size_t>(area.bottom - area.top);
    constexpr double kSteps = 2;
    DrawContext::HeldPixels held(context);
    if (isEmpty(area) || !held.take(pixels) || !context.spendPixels(kSteps * static_cast<double>(pixels)))
        return;
    AImage image(area.right - area.left, area.bottom - area.top);
    {
        ACanvas canvas(pixelsOf(image));
        if (!drawing.draw(context, canvas, AAffine::translation(-area.left, -area.top) * toPixels)) return;
    }
    context.drawImage(image, AAffine::translation(area.left, area.top), picture.opacity, false,
                      EBlend::normal);
}

void drawPixels(DrawContext& context, CachedPicture& shown, const AAffine& toPixels,
                const UriPicture& picture) {
    const AImage* const pixels =
        shown.pixels(context, picture.smooth ? CachedPicture::reductionFor(toPixels) : 1);
    // To be shown smaller, every pixel may have to be read.
    constexpr double kSteps = 0.25;
    if (!pixels || !context.spendPixels(kSteps * static_cast<double>(pixels->pixels().size()))) return;
    const AAffine whole =
        AAffine::scaling(shown.size().x / pixels->width(), shown.size().y / pixels->height());
    context.drawImage(*pixels, toPixels * whole, picture.opacity, picture.smooth, EBlend::normal);
}

void paintPicture(DrawContext& context, CachedPicture& shown, const UriPicture& picture,
                  const UserSpace& space) {
    const AFRect& viewport = picture.viewport;
    const AFPoint size = shown.size();
    if (viewport.IsRectEmpty()) return;
    const AFRect whole{0, 0, size.x, size.y};
    const Affine fit = fitViewBox(whole, viewport.Width(), viewport.Height(), picture.aspect);
    if (!(fit.a > kLeastScale && fit.d > kLeastScale)) return;
    const Affine toPixels = space.toDrawing * translation(viewport.left, viewport.top) * fit;
    // "slice" fills the viewport and more.
    const AFRect shownBox = rectBounds(translation(viewport.left, viewport.top) * fit, whole);
    const double slack = 1e-6 * (viewport.Width() + viewport.Height());
    const bool slices = shownBox.left < viewport.left - slack || shownBox.top < viewport.top - slack ||
                        shownBox.right > viewport.right + slack || shownBox.bottom > viewport.bottom + slack;
    if (slices) context.pushClip(APath::rectangle(viewport), space.toDrawing, EFillRule::nonZero);
    if (shown.drawing()) {
        const RECT area = intersection(pixelsAround(rectBounds(toPixels, whole), 1), context.clipBounds());
        drawInner(context, *shown.drawing(), toPixels, area, picture);
    } else {
        drawPixels(context, shown, toPixels, picture);
    }
    if (slices) context.popClip();
}

}  // namespace

void paintUri(DrawContext& context, const UriPicture& picture, const UserSpace& space) {
    if (picture.uri.empty() || !isSeen(context)) return;
    if (context.recorder()) return recordPicture(context, picture.viewport, space);
    if (CachedPicture* const shown = cachedPicture(context, picture.uri))
        paintPicture(context, *shown, picture, space);
}

void paintImage(DrawContext& context, const DrawnElement& element, double opacity) {
    const std::string_view uri = element.attributes.get(Attribute::href);
    if (uri.empty() || !element.style.visible || !(opacity > 0) || !isSeen(context)) return;
    const AttributeSet& attributes = element.attributes;
    const bool isSized = attributes.has(Attribute::width) && attributes.has(Attribute::height);
    if (context.recorder() && isSized) return recordPicture(context, viewportOf(element, {}), element.space);
    CachedPicture* const picture = cachedPicture(context, uri);
    if (!picture) return;
    const AFRect viewport = viewportOf(element, picture->size());
    if (context.recorder()) return recordPicture(context, viewport, element.space);
    paintPicture(
        context, *picture,
        {uri, viewport, attributes.get(Attribute::preserveAspectRatio), element.style.smoothImages, opacity},
        element.space);
}

}  // namespace svg

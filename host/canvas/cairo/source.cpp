#include "canvas/cairo/source.h"

#include <algorithm>
#include <cmath>

#include "canvas/cairo/gradient.h"
#include "canvas/cairo/limits.h"

namespace {

ACairoPattern colorPattern(const AColor& color, double opacity) {
    opacity *= clampedOpacity(color.getOpacity());
    if (opacity <= 0) return nullptr;
    const COLORREF value = color.getColorRef();
    return ACairoPattern(cairo_pattern_create_rgba(GetRValue(value) / 255.0, GetGValue(value) / 255.0,
                                                   GetBValue(value) / 255.0, opacity));
}

// One stop, or all of them in one place.
bool isOneColor(const AGradient& gradient) {
    return gradient.stops.size() == 1 ||
           (gradient.from.x == gradient.to.x && gradient.from.y == gradient.to.y &&
            (!gradient.radial || gradient.fromRadius == gradient.radius));
}

ACairoPattern gradientSource(const AGradient& gradient, double opacity) {
    if (gradient.stops.empty() || opacity <= 0 || !isFinite(gradient)) return nullptr;
    if (isOneColor(gradient)) return colorPattern(gradient.stops.back().color, opacity);
    return gradientPattern(gradient, opacity);
}

void dim(AImage& image, double opacity) {
    const auto factor = static_cast<std::uint32_t>(std::lround(opacity * 256));
    for (std::uint32_t& pixel : image.pixels()) {
        const std::uint32_t odd = (pixel >> 8 & 0xff00ff) * factor & 0xff00ff00;
        const std::uint32_t even = (pixel & 0xff00ff) * factor >> 8 & 0xff00ff;
        pixel = odd | even;
    }
}

ACairoSurface surfaceOf(const AImage& image) {
    // Only read.
    auto* bits = reinterpret_cast<unsigned char*>(const_cast<std::uint32_t*>(image.pixels().data()));
    return ACairoSurface(cairo_image_surface_create_for_data(bits, CAIRO_FORMAT_ARGB32, image.width(),
                                                             image.height(), image.width() * 4));
}

ASource imageSource(const AImage& image, const AAffine& toPixels, double opacity, cairo_filter_t filter,
                    cairo_extend_t extend) {
    opacity = clampedOpacity(opacity);
    const std::optional<AAffine> inverse = toPixels.inverse();
    if (image.empty() || opacity <= 0 || !inverse || !inverse->isFinite()) return {};
    ASource source;
    source.borrows = true;
    if (opacity < 1) {
        source.dimmed = image;
        dim(source.dimmed, opacity);
    }
    const ACairoSurface surface = surfaceOf(opacity < 1 ? source.dimmed : image);
    source.pattern.reset(cairo_pattern_create_for_surface(surface.get()));
    const cairo_matrix_t matrix = matrixOf(*inverse);
    cairo_pattern_set_matrix(source.pattern.get(), &matrix);
    cairo_pattern_set_filter(source.pattern.get(), filter);
    cairo_pattern_set_extend(source.pattern.get(), extend);
    if (cairo_pattern_status(source.pattern.get()) != CAIRO_STATUS_SUCCESS) return {};
    return source;
}

ASource tileSource(const ATile& tile, double opacity, const RECT& seen) {
    const AAffine& t = tile.toPixels;
    if (tile.image.empty() || !isUsable(t)) return {};
    // The tile next to the first pixel, since cairo cannot count to tiles that are far away.
    const AFPoint at = t.inverse()->apply({static_cast<double>(seen.left), static_cast<double>(seen.top)});
    const double width = tile.image.width();
    const double height = tile.image.height();
    const AAffine placed =
        t * AAffine::translation(std::floor(at.x / width) * width, std::floor(at.y / height) * height);
    // Much reduced, every pixel would be mixed of any number of tiles.
    const bool reduced = std::fabs(t.determinant()) < largestScale(t) / 4;
    return imageSource(tile.image, placed, opacity, reduced ? CAIRO_FILTER_BILINEAR : CAIRO_FILTER_GOOD,
                       CAIRO_EXTEND_REPEAT);
}

}  // namespace

ASource sourceOf(const APaint& paint, const RECT& seen) {
    if (paint.gradient) return {gradientSource(*paint.gradient, clampedOpacity(paint.opacity)), {}, false};
    if (paint.tile) return tileSource(*paint.tile, paint.opacity, seen);
    return {colorPattern(paint.color, 1), {}, false};
}

ASource sourceOf(const AImage& image, const AAffine& toPixels, double opacity, bool smooth) {
    if (!isUsable(toPixels)) return {};
    return imageSource(image, toPixels, opacity, smooth ? CAIRO_FILTER_GOOD : CAIRO_FILTER_NEAREST,
                       CAIRO_EXTEND_PAD);
}

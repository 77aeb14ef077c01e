#include "app/window/canvas_picture.h"

#include <algorithm>
#include <cmath>

#include "canvas/canvas.h"
#include "kzutil/rect_math.h"

namespace app::window {

namespace {

constexpr int kTileSide = 256;
constexpr std::size_t kBudget = std::size_t{192} << 20;  // some screens of the largest kind
constexpr double kMarkWidth = 1.5;

AColor withOpacity(AColor color, double opacity) {
    return AColor(color.getColorRef(), opacity);
}

// On the middles of pixels, so that its line is sharp. What lies far outside is moved near: pens have their limits.
AFRect onPixels(const AFRect& rect, const Viewport& place) {
    const auto closeBy = [](double value, int length) {
        return std::floor(std::clamp(value, -100.0, length + 100.0)) + 0.5;
    };
    return {closeBy(rect.left, place.width()), closeBy(rect.top, place.height()),
            closeBy(rect.right, place.width()), closeBy(rect.bottom, place.height())};
}

void outline(ACanvas& canvas, const AFRect& rect, AColor color, double width) {
    AStrokeStyle pen;
    pen.width = width;
    canvas.stroke(APath::rectangle(rect), AAffine(), {color}, pen);
}

}  // namespace

void CanvasPicture::show(std::shared_ptr<const ADisplayList> list, std::shared_ptr<const AShownPaint> paint) {
    m_tiles.reset();
    m_marks.clear();
    m_tiles = std::make_unique<ATiles>(std::move(list), std::move(paint),
                                       ATiles::Options{kTileSide, kBudget, 0, m_listener});
}

void CanvasPicture::showPaint(std::shared_ptr<const AShownPaint> paint) {
    if (m_tiles) m_tiles->setShown(std::move(paint));
}

void CanvasPicture::drawSurround(ACanvas& canvas, const Viewport& place, const CanvasColors& colors) const {
    const AFRect page = onPixels(place.toPixels(place.page()), place);
    APath beside =
        APath::rectangle({0, 0, static_cast<double>(place.width()), static_cast<double>(place.height())});
    beside.append(APath::rectangle({page.left - 0.5, page.top - 0.5, page.right - 0.5, page.bottom - 0.5}),
                  AAffine());
    canvas.fill(beside, AAffine(), {withOpacity(colors.surround, 0.86)}, EFillRule::evenOdd);
    outline(canvas, {page.left - 1, page.top - 1, page.right, page.bottom}, colors.edge, 1);
}

void CanvasPicture::drawMarks(ACanvas& canvas, const Viewport& place, const CanvasColors& colors) const {
    const AFRect seen{0, 0, static_cast<double>(place.width()), static_cast<double>(place.height())};
    for (const AFRect& mark : m_marks) {
        const AFRect box = place.toPixels(mark);
        const AFRect within = intersection(box, seen);
        if (within.right < within.left || within.bottom < within.top) continue;
        const AFRect rect = onPixels(box, place);
        canvas.fill(APath::rectangle(rect), AAffine(), {withOpacity(colors.mark, 0.08)}, EFillRule::nonZero);
        outline(canvas, rect, colors.mark, kMarkWidth);
    }
}

bool CanvasPicture::draw(const Viewport& place, const std::optional<RubberBand>& band,
                         const CanvasColors& colors, AImage& image) {
    bool complete = true;
    if (m_tiles) {
        m_tiles->want(place.zoom(), place.area());
        complete = m_tiles->show(place.zoom(), place.area(), image);
    } else {
        image = AImage(place.width(), place.height());
    }
    ACanvas canvas(pixelsOf(image));
    if (m_tiles) {
        drawSurround(canvas, place, colors);
        drawMarks(canvas, place, colors);
    } else {
        canvas.fill(
            APath::rectangle({0, 0, static_cast<double>(place.width()), static_cast<double>(place.height())}),
            AAffine(), {colors.surround}, EFillRule::nonZero);
    }
    if (band) {
        const AFRect rect = onPixels({std::min(band->from.x, band->to.x), std::min(band->from.y, band->to.y),
                                      std::max(band->from.x, band->to.x), std::max(band->from.y, band->to.y)},
                                     place);
        AStrokeStyle pen;
        if (band->to.x < band->from.x) pen.dashes = {5, 4};
        canvas.fill(APath::rectangle(rect), AAffine(), {withOpacity(colors.mark, 0.12)}, EFillRule::nonZero);
        canvas.stroke(APath::rectangle(rect), AAffine(), {colors.mark}, pen);
    }
    return complete;
}

void CanvasPicture::finish() {
    if (m_tiles) m_tiles->finish();
}

}  // namespace app::window

#include "canvas/canvas.h"

#include <array>
#include <cmath>

#include "canvas/cairo/library.h"
#include "canvas/cairo/path_cutting.h"
#include "canvas/cairo/pen.h"
#include "canvas/cairo/source.h"
#include "canvas/library_call.h"

namespace {

// More dashes than this are worth cutting the line.
constexpr double kManyDashes = 1e4;
// With more dashes nobody can tell them from a solid line.
constexpr double kMostDashes = 5e5;

// In the order of EBlend.
constexpr std::array<cairo_operator_t, 16> kOperators{
    CAIRO_OPERATOR_OVER,          CAIRO_OPERATOR_MULTIPLY,       CAIRO_OPERATOR_SCREEN,
    CAIRO_OPERATOR_OVERLAY,       CAIRO_OPERATOR_DARKEN,         CAIRO_OPERATOR_LIGHTEN,
    CAIRO_OPERATOR_COLOR_DODGE,   CAIRO_OPERATOR_COLOR_BURN,     CAIRO_OPERATOR_HARD_LIGHT,
    CAIRO_OPERATOR_SOFT_LIGHT,    CAIRO_OPERATOR_DIFFERENCE,     CAIRO_OPERATOR_EXCLUSION,
    CAIRO_OPERATOR_HSL_HUE,       CAIRO_OPERATOR_HSL_SATURATION, CAIRO_OPERATOR_HSL_COLOR,
    CAIRO_OPERATOR_HSL_LUMINOSITY};
static_assert(static_cast<std::size_t>(EBlend::luminosity) + 1 == kOperators.size());

// Only what can be seen of the line: it reaches too far, or has too many dashes.
void strokeCut(cairo_t* cairo, const APath& path, const AAffine& toPixels, APen& pen, const RECT& seen) {
    const double margin = pen.reach + 2;
    const AFRect room{seen.left - margin, seen.top - margin, seen.right + margin, seen.bottom + margin};
    const std::vector<ARun> runs = cutForStroke(path, toPixels, room, !pen.dashes.empty());
    double dashes = 0;
    for (const ARun& run : runs) dashes += dashCount(pen, run.path);
    // A wide pen has rounder ends.
    dashes *= 1 + std::sqrt(pen.reach);
    if (!(dashes < kMostDashes)) pen.dashes.clear();
    for (const ARun& run : runs) {
        const APath pixels = transformed(run.path, toPixels);
        trace(cairo, pixels, pixels.points().data());
        if (!pen.dashes.empty()) strokeTraced(cairo, pen, toPixels, pen.dashOffset + run.start * pen.unit);
    }
    if (pen.dashes.empty()) strokeTraced(cairo, pen, toPixels, 0);
}

}  // namespace

ACanvas::ACanvas(const APixels& pixels) : m_library(std::make_unique<Library>(pixels)) {}
ACanvas::~ACanvas() = default;

void ACanvas::fill(const APath& path, const AAffine& toPixels, const APaint& paint, EFillRule rule) {
    Library& library = *m_library;
    const ALibraryCall call;
    const std::optional<AFRect> box = library.place(path, toPixels);
    if (!box || !library.isVisible(*box, 1)) return;
    const ASource source = sourceOf(paint, library.bounds());
    if (!source) return library.settle();
    library.setSource(source);
    library.traceArea(path, toPixels, *box);
    cairo_set_fill_rule(library.cairo(), ruleOf(rule));
    cairo_fill(library.cairo());
    library.settle();
}

void ACanvas::stroke(const APath& path, const AAffine& toPixels, const APaint& paint,
                     const AStrokeStyle& style) {
    Library& library = *m_library;
    const ALibraryCall call;
    std::optional<APen> pen = penOf(style, toPixels);
    if (!pen) return;
    const std::optional<AFRect> box = library.place(path, toPixels);
    if (!box || !library.isVisible(*box, pen->reach)) return;
    const ASource source = sourceOf(paint, library.bounds());
    if (!source) return library.settle();
    cairo_t* cairo = library.cairo();
    library.setSource(source);
    setPen(cairo, *pen);
    if (pen->cap == ELineCap::square) strokeSquareDots(cairo, path, *pen, toPixels);
    if (isWithin(*box, kFar) && dashCount(*pen, path) < kManyDashes) {
        library.traceLine(path, *pen);
        strokeTraced(cairo, *pen, toPixels, pen->dashOffset);
    } else {
        strokeCut(cairo, path, toPixels, *pen, library.bounds());
    }
    library.settle();
}

void ACanvas::drawImage(const AImage& image, const AAffine& toPixels, double opacity, bool smooth,
                        EBlend blend) {
    Library& library = *m_library;
    const ALibraryCall call;
    const APath frame =
        APath::rectangle({0, 0, static_cast<double>(image.width()), static_cast<double>(image.height())});
    const std::optional<AFRect> box = library.place(frame, toPixels);
    if (!box || !library.isVisible(*box, 1)) return;
    // Clamped and cut by its frame: else an enlarged image would fade out towards its edges.
    const ASource source = sourceOf(image, toPixels, opacity, smooth);
    if (!source) return library.settle();
    library.setSource(source);
    library.traceArea(frame, toPixels, *box);
    cairo_set_fill_rule(library.cairo(), CAIRO_FILL_RULE_WINDING);
    cairo_set_operator(library.cairo(), kOperators[static_cast<std::size_t>(blend)]);
    cairo_fill(library.cairo());
    cairo_set_operator(library.cairo(), CAIRO_OPERATOR_OVER);
    library.settle();
}

void ACanvas::pushClip(const APath& path, const AAffine& toPixels, EFillRule rule) {
    m_library->pushClip(path, toPixels, rule);
}

void ACanvas::popClip() {
    m_library->popClip();
}

RECT ACanvas::clipBounds() const {
    return m_library->bounds();
}

void ACanvas::flush() {
    m_library->flush();
}

#include "canvas/cairo/library.h"

#include <algorithm>
#include <cerrno>
#include <cmath>
#include <new>
#include <span>

#include "canvas/cairo/limits.h"
#include "canvas/cairo/path_cutting.h"
#include "canvas/library_call.h"

namespace {

// cairo draws a curve as one line when its control points are within a tenth of a pixel of it; what is that flat by this
// measure is by cairo's, which rounds the points to a 256th.
constexpr double kFlat = 0.09;

bool isNear(const AFPoint& point, const AFPoint& from, const AFPoint& along, double length2) {
    const double x = point.x - from.x;
    const double y = point.y - from.y;
    const double share = length2 > 0 ? std::clamp((x * along.x + y * along.y) / length2, 0.0, 1.0) : 0;
    const double dx = x - along.x * share;
    const double dy = y - along.y * share;
    return dx * dx + dy * dy < kFlat * kFlat;
}

bool isFlat(const AFPoint& from, const AFPoint* to) {
    const AFPoint along{to[2].x - from.x, to[2].y - from.y};
    const double length2 = along.x * along.x + along.y * along.y;
    return isNear(to[0], from, along, length2) && isNear(to[1], from, along, length2);
}

// Whole figures.
void traceFigures(cairo_t* cairo, std::span<const APath::EVerb> verbs, const AFPoint* point, bool flattens) {
    AFPoint figure;  // where it started
    AFPoint at;
    for (const APath::EVerb verb : verbs) {
        switch (verb) {
            case APath::EVerb::move:
                cairo_move_to(cairo, point->x, point->y);
                figure = at = *point++;
                break;
            case APath::EVerb::line:
                cairo_line_to(cairo, point->x, point->y);
                at = *point++;
                break;
            case APath::EVerb::curve:
                if (flattens && isFlat(at, point)) {
                    cairo_line_to(cairo, point[2].x, point[2].y);
                } else {
                    cairo_curve_to(cairo, point[0].x, point[0].y, point[1].x, point[1].y, point[2].x,
                                   point[2].y);
                }
                at = point[2];
                point += 3;
                break;
            case APath::EVerb::close:
                cairo_close_path(cairo);
                at = figure;
                break;
        }
    }
}

// In every row cairo counts with all figures of an outline, those far beside the picture too. Of an outline with more
// verbs, such as a text of thousands of letters, each figure is looked at before.
constexpr std::size_t kManyVerbs = 1024;

constexpr std::size_t pointsOf(APath::EVerb verb) {
    return verb == APath::EVerb::close ? 0 : verb == APath::EVerb::curve ? 3 : 1;
}

AFRect boxOf(std::span<const AFPoint> points) {
    AFRect box{kLargest, kLargest, -kLargest, -kLargest};
    for (const AFPoint& p : points) {
        box = {std::min(box.left, p.x), std::min(box.top, p.y), std::max(box.right, p.x),
               std::max(box.bottom, p.y)};
    }
    return box;
}

bool touches(const AFRect& box, const AFRect& seen) {
    return box.left < seen.right && box.right > seen.left && box.top < seen.bottom && box.bottom > seen.top;
}

}  // namespace

void trace(cairo_t* cairo, const APath& path, const AFPoint* points, bool flattens) {
    traceFigures(cairo, path.verbs(), points, flattens);
}

ACanvas::Library::Library(const APixels& pixels) : m_pixels(pixels) {
    start();
}

void ACanvas::Library::start() {
    const ALibraryCall call;
    m_cairo.reset();
    m_surface.reset(
        cairo_image_surface_create_for_data(static_cast<unsigned char*>(m_pixels.bits),
                                            m_pixels.hasAlpha ? CAIRO_FORMAT_ARGB32 : CAIRO_FORMAT_RGB24,
                                            m_pixels.width, m_pixels.height, m_pixels.width * 4));
    m_cairo.reset(cairo_create(m_surface.get()));
    if (cairo_status(m_cairo.get()) == CAIRO_STATUS_NO_MEMORY) throw std::bad_alloc();
    ALibraryCall::check();
}

std::optional<AFRect> ACanvas::Library::place(const APath& path, const AAffine& toPixels) {
    errno = 0;  // for settle()
    m_points.resize(path.points().size());
    if (m_points.empty()) return std::nullopt;
    AFRect box{kLargest, kLargest, -kLargest, -kLargest};
    double poison = 0;  // stays 0 as long as all is finite
    std::transform(path.points().begin(), path.points().end(), m_points.begin(), [&](const AFPoint& from) {
        const AFPoint p = toPixels.apply(from);
        box.left = std::min(box.left, p.x);
        box.top = std::min(box.top, p.y);
        box.right = std::max(box.right, p.x);
        box.bottom = std::max(box.bottom, p.y);
        poison += (p.x + p.y) * 0;
        return p;
    });
    if (poison != 0 || !isWithin(box, kLargest)) return std::nullopt;
    return box;
}

bool ACanvas::Library::isVisible(const AFRect& box, double margin) const {
    const RECT seen = bounds();
    return seen.left < seen.right && seen.top < seen.bottom && box.left - margin < seen.right &&
           box.right + margin > seen.left && box.top - margin < seen.bottom && box.bottom + margin > seen.top;
}

void ACanvas::Library::traceArea(const APath& path, const AAffine& toPixels, const AFRect& box) {
    if (path.verbs().size() >= kManyVerbs) {
        traceSeen(path, 1, true, &toPixels);
    } else if (isWithin(box, kFar)) {
        trace(cairo(), path, m_points.data(), true);
    } else {
        traceCut(path, toPixels);
    }
}

void ACanvas::Library::traceLine(const APath& path, const APen& pen) {
    path.verbs().size() >= kManyVerbs ? traceSeen(path, pen.reach, pen.isThin, nullptr)
                                      : trace(cairo(), path, m_points.data(), pen.isThin);
}

void ACanvas::Library::traceCut(const APath& path, const AAffine& toPixels) {
    constexpr double kRoom = 64;
    const APath cut =
        cutForFill(path, toPixels, {-kRoom, -kRoom, m_pixels.width + kRoom, m_pixels.height + kRoom});
    trace(cairo(), cut, cut.points().data());
}

void ACanvas::Library::traceSeen(const APath& path, double margin, bool flattens, const AAffine* toPixels) {
    const RECT whole = bounds();
    const AFRect seen{whole.left - margin, whole.top - margin, whole.right + margin, whole.bottom + margin};
    const std::span<const APath::EVerb> verbs = path.verbs();
    const std::span<const AFPoint> points = m_points;
    APath figure;
    std::size_t point = 0;
    for (std::size_t first = 0, last = 0; first < verbs.size(); first = last) {
        const std::size_t start = point;
        do {
            point += pointsOf(verbs[last++]);
        } while (last < verbs.size() && verbs[last] != APath::EVerb::move);
        const AFRect box = boxOf(points.subspan(start, point - start));
        if (!touches(box, seen)) continue;
        if (!toPixels || isWithin(box, kFar)) {
            traceFigures(cairo(), verbs.subspan(first, last - first), &points[start], flattens);
        } else {
            figure.assign(verbs.subspan(first, last - first),
                          std::span(path.points()).subspan(start, point - start));
            traceCut(figure, *toPixels);
        }
    }
}

void ACanvas::Library::setSource(const ASource& source) {
    cairo_set_source(cairo(), source.pattern.get());
    m_borrows = source.borrows;
}

void ACanvas::Library::settle() {
    // Not every part of cairo tells that it had no memory, and what it tells so may be a number too large.
    const bool lackedMemory = errno == ENOMEM || ALibraryCall::lackedMemory();
    if (m_borrows) cairo_set_source_rgb(cairo(), 0, 0, 0);
    m_borrows = false;
    if (cairo_status(cairo()) != CAIRO_STATUS_SUCCESS) {
        start();
        for (const Clip& clip : m_clips) {
            cairo_save(cairo());
            applyClip(clip);
        }
    }
    if (lackedMemory) throw std::bad_alloc();
}

void ACanvas::Library::pushClip(const APath& path, const AAffine& toPixels, EFillRule rule) {
    const ALibraryCall call;
    Clip clip{path, toPixels, rule, {}};
    cairo_save(cairo());
    applyClip(clip);
    clip.bounds = clipExtents();
    m_clips.push_back(std::move(clip));
    settle();
}

void ACanvas::Library::popClip() {
    if (m_clips.empty()) return;
    m_clips.pop_back();
    cairo_restore(cairo());
}

RECT ACanvas::Library::bounds() const {
    if (!m_clips.empty()) return m_clips.back().bounds;
    return {0, 0, std::max(m_pixels.width, 0), std::max(m_pixels.height, 0)};
}

void ACanvas::Library::applyClip(const Clip& clip) {
    cairo_new_path(cairo());
    cairo_set_fill_rule(cairo(), ruleOf(clip.rule));
    // Without an outline everything is cut away.
    if (const std::optional<AFRect> box = place(clip.path, clip.toPixels))
        traceArea(clip.path, clip.toPixels, *box);
    cairo_clip(cairo());
}

RECT ACanvas::Library::clipExtents() const {
    double left = 0;
    double top = 0;
    double right = 0;
    double bottom = 0;
    cairo_clip_extents(m_cairo.get(), &left, &top, &right, &bottom);
    const RECT whole = bounds();
    const auto pixel = [](double value, LONG low, LONG high) {
        return static_cast<LONG>(std::clamp<double>(value, low, high));
    };
    const RECT box{
        pixel(std::floor(left), whole.left, whole.right), pixel(std::floor(top), whole.top, whole.bottom),
        pixel(std::ceil(right), whole.left, whole.right), pixel(std::ceil(bottom), whole.top, whole.bottom)};
    return box.left < box.right && box.top < box.bottom ? box : RECT{};
}

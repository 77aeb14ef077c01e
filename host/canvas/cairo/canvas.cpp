// One cairo context serves a canvas for its whole life. It always has the identity matrix: outlines are
// transformed on the way in, and only a stroke's pen takes the matrix for a moment. An error makes a cairo
// context useless for good, so what cairo would refuse is sorted out before, and should it refuse something
// all the same, the context is made anew with its clips.
#include <cairo.h>

#include <algorithm>
#include <array>
#include <cmath>

#include "canvas/canvas.h"
#include "canvas/canvas_limits.h"
#include "canvas/path_cutting.h"

namespace {

// cairo counts pixels up to 2^23, and gets slow long before: what reaches farther than this is cut first.
constexpr double kFar = 1 << 15;
// With more dashes nobody can tell them from a solid line.
constexpr double kMostDashes = 5e5;

struct Release {
    void operator()(cairo_t* cairo) const { cairo_destroy(cairo); }
    void operator()(cairo_surface_t* surface) const { cairo_surface_destroy(surface); }
    void operator()(cairo_pattern_t* pattern) const { cairo_pattern_destroy(pattern); }
};
using Surface = std::unique_ptr<cairo_surface_t, Release>;
using Pattern = std::unique_ptr<cairo_pattern_t, Release>;

cairo_matrix_t matrixOf(const AAffine& transform) {
    return {transform.a, transform.b, transform.c, transform.d, transform.e, transform.f};
}

// In the order of EBlend.
constexpr std::array<cairo_operator_t, 16> kOperators{
    CAIRO_OPERATOR_OVER,          CAIRO_OPERATOR_MULTIPLY,       CAIRO_OPERATOR_SCREEN,
    CAIRO_OPERATOR_OVERLAY,       CAIRO_OPERATOR_DARKEN,         CAIRO_OPERATOR_LIGHTEN,
    CAIRO_OPERATOR_COLOR_DODGE,   CAIRO_OPERATOR_COLOR_BURN,     CAIRO_OPERATOR_HARD_LIGHT,
    CAIRO_OPERATOR_SOFT_LIGHT,    CAIRO_OPERATOR_DIFFERENCE,     CAIRO_OPERATOR_EXCLUSION,
    CAIRO_OPERATOR_HSL_HUE,       CAIRO_OPERATOR_HSL_SATURATION, CAIRO_OPERATOR_HSL_COLOR,
    CAIRO_OPERATOR_HSL_LUMINOSITY};
static_assert(static_cast<std::size_t>(EBlend::luminosity) + 1 == kOperators.size());

cairo_fill_rule_t ruleOf(EFillRule rule) {
    return rule == EFillRule::evenOdd ? CAIRO_FILL_RULE_EVEN_ODD : CAIRO_FILL_RULE_WINDING;
}

// Appends the figures; `points` are the path's, wherever they have been moved.
void trace(cairo_t* cairo, const APath& path, const AFPoint* point) {
    for (APath::EVerb verb : path.verbs()) {
        switch (verb) {
            case APath::EVerb::move:
                cairo_move_to(cairo, point->x, point->y);
                ++point;
                break;
            case APath::EVerb::line:
                cairo_line_to(cairo, point->x, point->y);
                ++point;
                break;
            case APath::EVerb::curve:
                cairo_curve_to(cairo, point[0].x, point[0].y, point[1].x, point[1].y, point[2].x, point[2].y);
                point += 3;
                break;
            case APath::EVerb::close:
                cairo_close_path(cairo);
                break;
        }
    }
}

void traceTransformed(cairo_t* cairo, const APath& path, const AAffine& toPixels) {
    const APath pixels = transformed(path, toPixels);
    trace(cairo, pixels, pixels.points().data());
}

double opacityOf(double opacity) {
    return opacity > 0 ? std::min(opacity, 1.0) : 0;
}

Surface surfaceOf(const AImage& image) {
    // Only read.
    auto* bits = reinterpret_cast<unsigned char*>(const_cast<std::uint32_t*>(image.pixels().data()));
    return Surface(cairo_image_surface_create_for_data(bits, CAIRO_FORMAT_ARGB32, image.width(),
                                                       image.height(), image.width() * 4));
}

void dim(AImage& image, double opacity) {
    const auto factor = static_cast<std::uint32_t>(std::lround(opacity * 256));
    for (std::uint32_t& pixel : image.pixels()) {
        const std::uint32_t odd = (pixel >> 8 & 0xff00ff) * factor & 0xff00ff00;
        const std::uint32_t even = (pixel & 0xff00ff) * factor >> 8 & 0xff00ff;
        pixel = odd | even;
    }
}

// cairo calculates gradients with 16 binary places, too few for a gradient on the unit square that covers a
// page. So they are handed over in pixels, or as near to it as a circle can be.
Pattern linearPattern(const AGradient& gradient) {
    const AAffine& t = gradient.toPixels;
    const AFPoint along{gradient.to.x - gradient.from.x, gradient.to.y - gradient.from.y};
    const AFPoint from = t.apply(gradient.from);
    const AFPoint to = t.applyLinear(along);
    // Lines of one colour stay at right angles to the line from the first stop to the last.
    AFPoint same = t.applyLinear({-along.y, along.x});
    const double length = std::hypot(same.x, same.y);
    if (!(length > 0) || !std::isfinite(length)) return nullptr;
    same = {same.x / length, same.y / length};
    const double slip = to.x * same.x + to.y * same.y;
    const AFPoint end{from.x + to.x - same.x * slip, from.y + to.y - same.y * slip};
    return Pattern(cairo_pattern_create_linear(from.x, from.y, end.x, end.y));
}

Pattern radialPattern(const AGradient& gradient) {
    const double scale = gradient.toPixels.scale();
    const AFPoint& from = gradient.from;
    const AFPoint& to = gradient.to;
    Pattern pattern(cairo_pattern_create_radial((from.x - to.x) * scale, (from.y - to.y) * scale,
                                                gradient.fromRadius * scale, 0, 0, gradient.radius * scale));
    const AAffine toPixels =
        gradient.toPixels * AAffine::translation(to.x, to.y) * AAffine::scaling(1 / scale);
    const std::optional<AAffine> inverse = toPixels.inverse();
    if (!inverse || !inverse->isFinite()) return nullptr;
    const cairo_matrix_t matrix = matrixOf(*inverse);
    cairo_pattern_set_matrix(pattern.get(), &matrix);
    return pattern;
}

bool isFinite(const AGradient& gradient) {
    const std::array<double, 6> numbers{gradient.from.x, gradient.from.y,     gradient.to.x,
                                        gradient.to.y,   gradient.fromRadius, gradient.radius};
    return std::all_of(numbers.begin(), numbers.end(),
                       [](double number) { return std::fabs(number) < kLargest; }) &&
           gradient.fromRadius >= 0 && gradient.radius >= 0;
}

bool isDegenerate(const AGradient& gradient) {
    return gradient.from.x == gradient.to.x && gradient.from.y == gradient.to.y &&
           (!gradient.radial || gradient.fromRadius == gradient.radius);
}

void addStop(cairo_pattern_t* pattern, double offset, const AColor& color, double opacity) {
    const COLORREF value = color.getColorRef();
    cairo_pattern_add_color_stop_rgba(pattern, offset, GetRValue(value) / 255.0, GetGValue(value) / 255.0,
                                      GetBValue(value) / 255.0, opacityOf(color.getOpacity()) * opacity);
}

}  // namespace

struct ACanvas::Library {
    struct Clip {
        APath path;
        AAffine toPixels;
        EFillRule rule;
        RECT bounds;
    };

    explicit Library(const APixels& drawn) : pixels(drawn) { start(); }
    ~Library() { flush(); }
    Library(const Library&) = delete;
    Library& operator=(const Library&) = delete;

    void start() {
        cairo.reset();
        surface.reset(
            cairo_image_surface_create_for_data(static_cast<unsigned char*>(pixels.bits),
                                                pixels.hasAlpha ? CAIRO_FORMAT_ARGB32 : CAIRO_FORMAT_RGB24,
                                                pixels.width, pixels.height, pixels.width * 4));
        cairo.reset(cairo_create(surface.get()));
    }

    void flush() { cairo_surface_flush(surface.get()); }

    RECT bounds() const {
        if (!clips.empty()) return clips.back().bounds;
        return {0, 0, std::max(pixels.width, 0), std::max(pixels.height, 0)};
    }

    // Takes the path's points to the scratch points. Nothing when a point cannot be drawn, or there is none.
    std::optional<AFRect> place(const APath& path, const AAffine& toPixels) {
        points.resize(path.points().size());
        if (points.empty()) return std::nullopt;
        AFRect box{kLargest, kLargest, -kLargest, -kLargest};
        double poison = 0;  // stays 0 as long as all is finite
        std::transform(path.points().begin(), path.points().end(), points.begin(), [&](const AFPoint& from) {
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

    static bool isWithin(const AFRect& box, double limit) {
        return box.left >= -limit && box.top >= -limit && box.right <= limit && box.bottom <= limit;
    }

    bool isVisible(const AFRect& box, double margin) const {
        const RECT seen = bounds();
        return seen.left < seen.right && seen.top < seen.bottom && box.left - margin < seen.right &&
               box.right + margin > seen.left && box.top - margin < seen.bottom &&
               box.bottom + margin > seen.top;
    }

    // The outline for a fill or a clip; `path` has just been placed.
    void traceArea(const APath& path, const AAffine& toPixels, const AFRect& box) {
        if (isWithin(box, kFar)) return trace(cairo.get(), path, points.data());
        constexpr double kRoom = 64;
        const APath cut =
            cutForFill(path, toPixels, {-kRoom, -kRoom, pixels.width + kRoom, pixels.height + kRoom});
        trace(cairo.get(), cut, cut.points().data());
    }

    bool setColor(const AColor& color) {
        const double opacity = opacityOf(color.getOpacity());
        if (opacity <= 0) return false;
        const COLORREF value = color.getColorRef();
        cairo_set_source_rgba(cairo.get(), GetRValue(value) / 255.0, GetGValue(value) / 255.0,
                              GetBValue(value) / 255.0, opacity);
        return true;
    }

    bool setGradient(const AGradient& gradient, double opacity) {
        opacity = opacityOf(opacity);
        if (gradient.stops.empty() || opacity <= 0 || !isFinite(gradient) || !isUsable(gradient.toPixels))
            return false;
        if (gradient.stops.size() == 1 || isDegenerate(gradient)) {
            const AColor& only = gradient.stops.back().color;
            return setColor(AColor(only.getColorRef(), opacityOf(only.getOpacity()) * opacity));
        }
        const Pattern pattern = gradient.radial ? radialPattern(gradient) : linearPattern(gradient);
        if (!pattern) return false;
        double offset = 0;
        for (const AGradientStop& stop : gradient.stops) {
            offset = std::clamp(stop.offset, offset, 1.0);
            addStop(pattern.get(), offset, stop.color, opacity);
        }
        static constexpr std::array<cairo_extend_t, 3> kExtends{CAIRO_EXTEND_PAD, CAIRO_EXTEND_REFLECT,
                                                                CAIRO_EXTEND_REPEAT};
        cairo_pattern_set_extend(pattern.get(), kExtends[static_cast<std::size_t>(gradient.spread)]);
        cairo_set_source(cairo.get(), pattern.get());
        return cairo_pattern_status(pattern.get()) == CAIRO_STATUS_SUCCESS;
    }

    bool setImage(const AImage& image, const AAffine& toPixels, double opacity, cairo_filter_t filter,
                  cairo_extend_t extend) {
        opacity = opacityOf(opacity);
        if (image.empty() || opacity <= 0 || !isUsable(toPixels)) return false;
        AAffine placed = toPixels;
        if (extend == CAIRO_EXTEND_REPEAT) {
            // The tile next to the first pixel, since cairo cannot count to tiles that are far away.
            const RECT seen = bounds();
            const AFPoint at =
                toPixels.inverse()->apply({static_cast<double>(seen.left), static_cast<double>(seen.top)});
            placed = toPixels * AAffine::translation(std::floor(at.x / image.width()) * image.width(),
                                                     std::floor(at.y / image.height()) * image.height());
        }
        const std::optional<AAffine> inverse = placed.inverse();
        if (!inverse || !inverse->isFinite()) return false;
        const AImage* shown = &image;
        if (opacity < 1) {
            dimmed = image;
            dim(dimmed, opacity);
            shown = &dimmed;
        }
        const Surface source = surfaceOf(*shown);
        const Pattern pattern(cairo_pattern_create_for_surface(source.get()));
        const cairo_matrix_t matrix = matrixOf(*inverse);
        cairo_pattern_set_matrix(pattern.get(), &matrix);
        cairo_pattern_set_filter(pattern.get(), filter);
        cairo_pattern_set_extend(pattern.get(), extend);
        if (cairo_pattern_status(pattern.get()) != CAIRO_STATUS_SUCCESS) return false;
        cairo_set_source(cairo.get(), pattern.get());
        borrowed = true;
        return true;
    }

    bool setPaint(const APaint& paint) {
        if (paint.gradient) return setGradient(*paint.gradient, paint.opacity);
        if (paint.tile) {
            // Much reduced, every pixel would be mixed of any number of tiles.
            const AAffine& t = paint.tile->toPixels;
            const bool reduced = std::fabs(t.determinant()) < largestScale(t) / 4;
            return setImage(paint.tile->image, t, paint.opacity,
                            reduced ? CAIRO_FILTER_BILINEAR : CAIRO_FILTER_GOOD, CAIRO_EXTEND_REPEAT);
        }
        return setColor(paint.color);
    }

    // Behind everything that was drawn: gives back what is the caller's, and starts anew after an error.
    void settle() {
        if (borrowed) {
            cairo_set_source_rgb(cairo.get(), 0, 0, 0);
            dimmed = AImage();
            borrowed = false;
        }
        if (cairo_status(cairo.get()) == CAIRO_STATUS_SUCCESS) return;
        start();
        for (const Clip& clip : clips) {
            cairo_save(cairo.get());
            applyClip(clip);
        }
    }

    void applyClip(const Clip& clip) {
        cairo_new_path(cairo.get());
        cairo_set_fill_rule(cairo.get(), ruleOf(clip.rule));
        // Without an outline everything is cut away.
        if (const std::optional<AFRect> box = place(clip.path, clip.toPixels))
            traceArea(clip.path, clip.toPixels, *box);
        cairo_clip(cairo.get());
    }

    RECT clipExtents() const {
        double left = 0;
        double top = 0;
        double right = 0;
        double bottom = 0;
        cairo_clip_extents(cairo.get(), &left, &top, &right, &bottom);
        const RECT whole = bounds();
        const auto pixel = [](double value, LONG low, LONG high) {
            return static_cast<LONG>(std::clamp<double>(value, low, high));
        };
        const RECT box{pixel(std::floor(left), whole.left, whole.right),
                       pixel(std::floor(top), whole.top, whole.bottom),
                       pixel(std::ceil(right), whole.left, whole.right),
                       pixel(std::ceil(bottom), whole.top, whole.bottom)};
        return box.left < box.right && box.top < box.bottom ? box : RECT{};
    }

    APixels pixels;
    Surface surface;
    std::unique_ptr<cairo_t, Release> cairo;
    std::vector<Clip> clips;
    std::vector<AFPoint> points;  // scratch
    AImage dimmed;                // behind the source, when it is see-through
    bool borrowed = false;        // the source reads the caller's pixels
};

ACanvas::ACanvas(const APixels& pixels) : m_library(std::make_unique<Library>(pixels)) {}
ACanvas::~ACanvas() = default;

void ACanvas::fill(const APath& path, const AAffine& toPixels, const APaint& paint, EFillRule rule) {
    Library& library = *m_library;
    const std::optional<AFRect> box = library.place(path, toPixels);
    if (!box || !library.isVisible(*box, 1) || !library.setPaint(paint)) return;
    cairo_t* cairo = library.cairo.get();
    library.traceArea(path, toPixels, *box);
    cairo_set_fill_rule(cairo, ruleOf(rule));
    cairo_fill(cairo);
    library.settle();
}

namespace {

// A stroke as cairo takes it.
struct Pen {
    double width = 0;
    double miterLimit = 0;
    double reach = 0;  // how far it reaches beyond the outline, in pixels
    std::vector<double> dashes;
    double dashOffset = 0;
    double dashesPerLength = 0;  // of the path before its transform
    bool turned = false;         // its shape needs the matrix; else everything is in pixels
};

// None when the pen draws nothing.
std::optional<Pen> penOf(const AStrokeStyle& style, const AAffine& toPixels) {
    if (!(style.width > 0) || !isUsable(toPixels)) return std::nullopt;
    if (!std::isfinite(style.miterLimit) || !std::isfinite(style.dashOffset)) return std::nullopt;
    const double scale = largestScale(toPixels);
    const double half = style.width * scale / 2;
    if (!(half > 0) || !(half < kWidestPen)) return std::nullopt;
    Pen pen;
    pen.miterLimit = std::clamp(style.miterLimit, 1.0, kWidestPen / half);
    pen.reach = half * 1.5 + 1;
    if (style.join == ELineJoin::miter) pen.reach = std::max(pen.reach, half * pen.miterLimit + 1);
    pen.turned = toPixels.b != 0 || toPixels.c != 0 || std::fabs(toPixels.a) != std::fabs(toPixels.d);
    const double unit = pen.turned ? 1 : scale;
    pen.width = style.width * unit;
    double period = 0;
    bool possible = true;
    for (double dash : style.dashes) {
        possible = possible && dash >= 0;
        period += dash * unit;
    }
    // A transform that is nearly flat makes a whole period smaller than cairo's smallest step.
    const double smallest = std::fabs(toPixels.determinant()) / scale;
    if (possible && period / unit * smallest > 1 / 256.0 && std::isfinite(period)) {
        for (double dash : style.dashes) pen.dashes.push_back(dash * unit);
        pen.dashesPerLength = static_cast<double>(style.dashes.size()) * unit / period;
        // An odd list comes to the same only after it has been through twice.
        pen.dashOffset = std::fmod(style.dashOffset * unit, period * 2);
        if (!std::isfinite(pen.dashOffset)) pen.dashOffset = 0;
    }
    return pen;
}

// About how many dashes the figures need. They are counted before the transform: one that is nearly flat
// packs any number of them into a pixel.
double dashCount(const Pen& pen, const APath& path) {
    if (pen.dashes.empty()) return 0;
    const std::vector<AFPoint>& points = path.points();
    double length = 0;
    for (std::size_t i = 1; i < points.size(); ++i)
        length += std::hypot(points[i].x - points[i - 1].x, points[i].y - points[i - 1].y);
    return length * pen.dashesPerLength;
}

void strokeTraced(cairo_t* cairo, const Pen& pen, const AAffine& toPixels, double dashOffset) {
    if (!pen.dashes.empty())
        cairo_set_dash(cairo, pen.dashes.data(), static_cast<int>(pen.dashes.size()), dashOffset);
    if (pen.turned) {
        const cairo_matrix_t matrix = {toPixels.a, toPixels.b, toPixels.c, toPixels.d, 0, 0};
        cairo_set_matrix(cairo, &matrix);
    }
    cairo_stroke(cairo);
    if (pen.turned) cairo_identity_matrix(cairo);
    if (!pen.dashes.empty()) cairo_set_dash(cairo, nullptr, 0, 0);
}

// Where figures have no length, in the path's coordinates.
std::vector<AFPoint> dotsOf(const APath& path) {
    std::vector<AFPoint> dots;
    const AFPoint* point = path.points().data();
    AFPoint start;
    bool dot = false;  // segments, and none of any length
    bool length = false;
    const auto end = [&] {
        if (dot && !length) dots.push_back(start);
        dot = length = false;
    };
    for (APath::EVerb verb : path.verbs()) {
        const int count = verb == APath::EVerb::curve ? 3 : verb == APath::EVerb::close ? 0 : 1;
        if (verb == APath::EVerb::move) {
            end();
            start = *point;
        } else {
            dot = true;
            for (int i = 0; i < count; ++i) length = length || point[i].x != start.x || point[i].y != start.y;
        }
        point += count;
        if (verb == APath::EVerb::close) end();
    }
    end();
    return dots;
}

// cairo leaves out dots with square caps, since nothing tells their direction: here they are level. A dash of
// no length is one.
void strokeSquareDots(cairo_t* cairo, const APath& path, const Pen& pen, const AAffine& toPixels) {
    const std::vector<AFPoint> dots = dotsOf(path);
    if (dots.empty()) return;
    AFPoint along = toPixels.applyLinear({1, 0});
    const double length = std::hypot(along.x, along.y);
    along = {along.x / length, along.y / length};
    for (const AFPoint& dot : dots) {
        const AFPoint at = toPixels.apply(dot);
        if (std::fabs(at.x) > kFar || std::fabs(at.y) > kFar) continue;
        cairo_move_to(cairo, at.x, at.y);
        cairo_line_to(cairo, at.x + along.x, at.y + along.y);
    }
    Pen square = pen;
    square.dashes = {0, 2 + 2 / length};  // longer than the line, in either measure
    strokeTraced(cairo, square, toPixels, 0);
}

}  // namespace

void ACanvas::stroke(const APath& path, const AAffine& toPixels, const APaint& paint,
                     const AStrokeStyle& style) {
    static constexpr std::array<cairo_line_cap_t, 3> kCaps{CAIRO_LINE_CAP_BUTT, CAIRO_LINE_CAP_ROUND,
                                                           CAIRO_LINE_CAP_SQUARE};
    static constexpr std::array<cairo_line_join_t, 3> kJoins{CAIRO_LINE_JOIN_MITER, CAIRO_LINE_JOIN_ROUND,
                                                             CAIRO_LINE_JOIN_BEVEL};
    Library& library = *m_library;
    std::optional<Pen> pen = penOf(style, toPixels);
    if (!pen) return;
    const std::optional<AFRect> box = library.place(path, toPixels);
    if (!box || !library.isVisible(*box, pen->reach) || !library.setPaint(paint)) return;
    cairo_t* cairo = library.cairo.get();
    cairo_set_line_width(cairo, pen->width);
    cairo_set_line_cap(cairo, kCaps[static_cast<std::size_t>(style.cap)]);
    cairo_set_line_join(cairo, kJoins[static_cast<std::size_t>(style.join)]);
    cairo_set_miter_limit(cairo, pen->miterLimit);
    if (style.cap == ELineCap::square) strokeSquareDots(cairo, path, *pen, toPixels);
    const double dashes = dashCount(*pen, path);
    if (Library::isWithin(*box, kFar) && dashes < kManyDashes) {
        trace(cairo, path, library.points.data());
        strokeTraced(cairo, *pen, toPixels, pen->dashOffset);
        return library.settle();
    }
    // Only what can be seen.
    const RECT seen = library.bounds();
    const double margin = pen->reach + 2;
    const AFRect room{seen.left - margin, seen.top - margin, seen.right + margin, seen.bottom + margin};
    const std::vector<ARun> runs = cutForStroke(path, toPixels, room, !pen->dashes.empty());
    double left = 0;
    for (const ARun& run : runs) left += dashCount(*pen, run.path);
    // A wide pen has rounder ends.
    left *= 1 + std::sqrt(pen->reach);
    if (!(left < kMostDashes)) pen->dashes.clear();
    const double unit = pen->turned ? 1 : toPixels.scale();
    for (const ARun& run : runs) {
        traceTransformed(cairo, run.path, toPixels);
        if (!pen->dashes.empty()) strokeTraced(cairo, *pen, toPixels, pen->dashOffset + run.start * unit);
    }
    if (pen->dashes.empty()) strokeTraced(cairo, *pen, toPixels, 0);
    library.settle();
}

void ACanvas::drawImage(const AImage& image, const AAffine& toPixels, double opacity, bool smooth,
                        EBlend blend) {
    Library& library = *m_library;
    const APath frame =
        APath::rectangle({0, 0, static_cast<double>(image.width()), static_cast<double>(image.height())});
    const std::optional<AFRect> box = library.place(frame, toPixels);
    if (!box || !library.isVisible(*box, 1)) return;
    // Padded, and cut by its frame: else an enlarged image would fade out towards its edges.
    if (!library.setImage(image, toPixels, opacity, smooth ? CAIRO_FILTER_GOOD : CAIRO_FILTER_NEAREST,
                          CAIRO_EXTEND_PAD)) {
        return;
    }
    library.traceArea(frame, toPixels, *box);
    cairo_set_fill_rule(library.cairo.get(), CAIRO_FILL_RULE_WINDING);
    cairo_set_operator(library.cairo.get(), kOperators[static_cast<std::size_t>(blend)]);
    cairo_fill(library.cairo.get());
    cairo_set_operator(library.cairo.get(), CAIRO_OPERATOR_OVER);
    library.settle();
}

void ACanvas::pushClip(const APath& path, const AAffine& toPixels, EFillRule rule) {
    Library& library = *m_library;
    Library::Clip clip{path, toPixels, rule, {}};
    cairo_save(library.cairo.get());
    library.applyClip(clip);
    clip.bounds = library.clipExtents();
    library.clips.push_back(std::move(clip));
    library.settle();
}

void ACanvas::popClip() {
    Library& library = *m_library;
    if (library.clips.empty()) return;
    library.clips.pop_back();
    cairo_restore(library.cairo.get());
}

RECT ACanvas::clipBounds() const {
    return m_library->bounds();
}

void ACanvas::flush() {
    m_library->flush();
}

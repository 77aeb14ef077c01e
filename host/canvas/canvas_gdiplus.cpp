// GDI+ has no gradients, tiles, dashes or soft clips as canvases need them, and rounds differently from one
// kind of bitmap to the next. So it tells how much of each pixel an outline covers (outline_coverage.h), and
// colours (paint_shader.h) are mixed into the pixels here.
#include <algorithm>
#include <array>
#include <cmath>

#include "canvas/canvas.h"
#include "canvas/canvas_limits.h"
#include "canvas/outline_coverage.h"
#include "canvas/paint_shader.h"
#include "canvas/path_cutting.h"
#include "canvas/path_dashes.h"
#include "canvas/pixel_mixing.h"

namespace {

// An outline that reaches farther, in pixels, is cut before it is stroked.
constexpr double kFar = 1 << 14;
// With more dashes nobody can tell them from a solid line.
constexpr double kMostDashes = 1e7;
// How far a curve's lines may be from it, in pixels.
constexpr double kTolerance = 0.05;
// What a dot is drawn as, in pixels: short enough not to be seen.
constexpr double kDot = 1.0 / 64;

using Coverage = std::span<const std::uint8_t>;

bool isEmpty(const RECT& rect) {
    return rect.left >= rect.right || rect.top >= rect.bottom;
}

RECT commonPart(const RECT& a, const RECT& b) {
    const RECT both{std::max(a.left, b.left), std::max(a.top, b.top), std::min(a.right, b.right),
                    std::min(a.bottom, b.bottom)};
    return isEmpty(both) ? RECT{} : both;
}

// The whole pixels of `within` that the box touches.
RECT touched(const AFRect& box, double margin, const RECT& within) {
    const auto pixel = [](double value, LONG low, LONG high) {
        return static_cast<LONG>(std::clamp<double>(value, low, high));
    };
    return commonPart(within, {pixel(std::floor(box.left - margin), within.left, within.right),
                               pixel(std::floor(box.top - margin), within.top, within.bottom),
                               pixel(std::ceil(box.right + margin), within.left, within.right),
                               pixel(std::ceil(box.bottom + margin), within.top, within.bottom)});
}

// Where the path comes to lie. None when it cannot be drawn, or has no points.
std::optional<AFRect> place(const APath& path, const AAffine& toPixels) {
    if (path.empty()) return std::nullopt;
    AFRect box{kLargest, kLargest, -kLargest, -kLargest};
    bool possible = true;
    for (const AFPoint& from : path.points()) {
        const AFPoint p = toPixels.apply(from);
        possible = possible && std::fabs(p.x) <= kLargest && std::fabs(p.y) <= kLargest;
        box = {std::min(box.left, p.x), std::min(box.top, p.y), std::max(box.right, p.x),
               std::max(box.bottom, p.y)};
    }
    return possible ? std::optional(box) : std::nullopt;
}

// When the path is a rectangle on pixel edges: the commonest outline by far, and one that needs no help.
std::optional<RECT> wholeRectangle(const APath& path, const AAffine& toPixels, const AFRect& box) {
    using enum APath::EVerb;
    static const std::vector<APath::EVerb> kRectangle{move, line, line, line, close};
    if (path.verbs() != kRectangle) return std::nullopt;
    if (std::max({-box.left, -box.top, box.right, box.bottom}) > kFar) return std::nullopt;
    const auto isCorner = [&](AFPoint p) {
        return (p.x == box.left || p.x == box.right) && (p.y == box.top || p.y == box.bottom);
    };
    std::array<AFPoint, 4> corners;
    for (std::size_t i = 0; i < corners.size(); ++i) {
        corners[i] = toPixels.apply(path.points()[i]);
        const AFPoint& p = corners[i];
        if (!isCorner(p) || std::floor(p.x) != p.x || std::floor(p.y) != p.y) return std::nullopt;
        // Every side runs along one direction.
        if (i > 0 && (p.x == corners[i - 1].x) == (p.y == corners[i - 1].y)) return std::nullopt;
    }
    if (corners[0].x == corners[2].x || corners[0].y == corners[2].y) return std::nullopt;
    return RECT{static_cast<LONG>(box.left), static_cast<LONG>(box.top), static_cast<LONG>(box.right),
                static_cast<LONG>(box.bottom)};
}

void append(APath& path, const APath& more) {
    const AFPoint* point = more.points().data();
    for (APath::EVerb verb : more.verbs()) {
        if (verb == APath::EVerb::move) path.moveTo(*point);
        if (verb == APath::EVerb::line) path.lineTo(*point);
        if (verb == APath::EVerb::curve) path.curveTo(point[0], point[1], point[2]);
        if (verb == APath::EVerb::close) path.close();
        point += verb == APath::EVerb::curve ? 3 : verb == APath::EVerb::close ? 0 : 1;
    }
}

double sumOf(const std::vector<double>& dashes) {
    double sum = 0;
    for (double dash : dashes) sum += dash;
    return sum;
}

bool isDashed(const AStrokeStyle& style) {
    const double sum = sumOf(style.dashes);
    return sum > 0 && std::isfinite(sum) &&
           std::all_of(style.dashes.begin(), style.dashes.end(), [](double dash) { return dash >= 0; });
}

// About how many dashes a path needs.
double dashCount(const APath& path, const AStrokeStyle& style) {
    const std::vector<AFPoint>& points = path.points();
    double length = 0;
    for (std::size_t i = 1; i < points.size(); ++i)
        length += std::hypot(points[i].x - points[i - 1].x, points[i].y - points[i - 1].y);
    return length / sumOf(style.dashes) * static_cast<double>(style.dashes.size());
}

// How far the pen reaches beyond its line, in pixels.
double reachOf(const AStrokeStyle& style, double scale) {
    const double half = style.width * scale / 2;
    const double miter = style.join == ELineJoin::miter ? std::min(style.miterLimit * half, kWidestPen) : 0;
    return std::max(half * 1.5, miter) + 1;
}

// What the pen has to draw without dashes of its own, as far as it may show in `room`.
APath penPath(const APath& path, const AAffine& toPixels, const AFRect& box, const AStrokeStyle& style,
              const AFRect& room) {
    const double scale = largestScale(toPixels);
    const double dot = style.cap == ELineCap::butt ? 0 : kDot / scale;
    bool dashed = isDashed(style);
    const bool isFar = std::max({-box.left, -box.top, box.right, box.bottom}) > kFar;
    std::vector<ARun> runs;
    if (isFar || (dashed && dashCount(path, style) > kManyDashes)) {
        runs = cutForStroke(path, toPixels, room, dashed);
    } else {
        runs.push_back({path, 0});
    }
    double left = 0;
    if (dashed) {
        for (const ARun& run : runs) left += dashCount(run.path, style);
    }
    dashed = dashed && left <= kMostDashes;
    const double offset = dashed ? std::fmod(style.dashOffset, 2 * sumOf(style.dashes)) : 0;
    APath result;
    for (const ARun& run : runs) {
        append(result, dashed
                           ? dashedPath(run.path, style.dashes, offset + run.start, kTolerance / scale, dot)
                           : withDrawnDots(run.path, dot));
    }
    return result;
}

// A clip that is more than a rectangle: how much of its pixels show, rows without gaps.
struct SoftClip {
    explicit SoftClip(const RECT& where)
        : area(where),
          shown(static_cast<std::size_t>(area.right - area.left) *
                static_cast<std::size_t>(area.bottom - area.top)) {}

    std::uint8_t* at(int x, int y) {
        return &shown[static_cast<std::size_t>(y - area.top) *
                          static_cast<std::size_t>(area.right - area.left) +
                      static_cast<std::size_t>(x - area.left)];
    }

    RECT area;
    std::vector<std::uint8_t> shown;
};

}  // namespace

struct ACanvas::Library {
    struct Clip {
        RECT bounds{};
        std::shared_ptr<SoftClip> soft;  // its area contains the bounds; null: all of them show
    };

    explicit Library(const APixels& drawn) : pixels(drawn) {
        clips.push_back({{0, 0, std::max(pixels.width, 0), std::max(pixels.height, 0)}, nullptr});
    }

    const Clip& clip() const { return clips.back(); }

    void fill(const APath& path, const AAffine& toPixels, EFillRule rule, const APaintShader& shader,
              EBlend blend = EBlend::normal) {
        const std::optional<AFRect> box = place(path, toPixels);
        if (!box) return;
        const RECT area = touched(*box, 0, clip().bounds);
        if (isEmpty(area)) return;
        eachCovered(path, toPixels, rule, *box, area,
                    [&](int x, int y, Coverage covered) { mix(x, y, covered, shader, blend); });
    }

    void eachCovered(const APath& path, const AAffine& toPixels, EFillRule rule, const AFRect& box,
                     const RECT& area, const AOutlineCoverage::Told& told) {
        if (!wholeRectangle(path, toPixels, box)) return coverage.fill(path, toPixels, rule, area, told);
        const std::vector<std::uint8_t> all(static_cast<std::size_t>(area.right - area.left), 255);
        for (LONG y = area.top; y < area.bottom; ++y) told(area.left, y, all);
    }

    // The pixels from (x, y) on, within the clip's bounds.
    void mix(int x, int y, Coverage covered, const APaintShader& shader, EBlend blend) {
        while (!covered.empty() && covered.front() == 0) {
            covered = covered.subspan(1);
            ++x;
        }
        while (!covered.empty() && covered.back() == 0) covered = covered.first(covered.size() - 1);
        if (covered.empty()) return;
        colors.resize(covered.size());
        shader.shade(x, y, colors);
        for (std::size_t i = 0; i < colors.size(); ++i) {
            if (covered[i] != 255) colors[i] = scaledPixel(colors[i], covered[i]);
        }
        if (clip().soft) {
            const std::uint8_t* shown = clip().soft->at(x, y);
            for (std::uint32_t& color : colors) color = scaledPixel(color, *shown++);
        }
        auto* below = static_cast<std::uint32_t*>(pixels.bits) +
                      static_cast<std::size_t>(y) * static_cast<std::size_t>(pixels.width) +
                      static_cast<std::size_t>(x);
        const std::uint32_t kept = pixels.hasAlpha ? 0xffffffff : 0x00ffffff;
        if (blend == EBlend::normal) {
            for (std::uint32_t color : colors) {
                *below = over(color, *below) & kept;
                ++below;
            }
            return;
        }
        // Without an alpha of their own pixels are opaque.
        for (std::uint32_t color : colors) {
            *below = blendedPixel(blend, color, *below | ~kept) & kept;
            ++below;
        }
    }

    void pushClip(const APath& path, const AAffine& toPixels, EFillRule rule) {
        Clip next;
        if (const std::optional<AFRect> box = place(path, toPixels))
            next.bounds = touched(*box, 0, clip().bounds);
        if (!isEmpty(next.bounds)) {
            next.soft = clip().soft;
            const std::optional<AFRect> box = place(path, toPixels);
            if (!wholeRectangle(path, toPixels, *box))
                next.soft = softClip(path, toPixels, rule, next.bounds);
        }
        clips.push_back(std::move(next));
    }

    std::shared_ptr<SoftClip> softClip(const APath& path, const AAffine& toPixels, EFillRule rule,
                                       const RECT& bounds) {
        auto soft = std::make_shared<SoftClip>(bounds);
        coverage.fill(path, toPixels, rule, bounds, [&](int x, int y, Coverage covered) {
            std::uint8_t* shown = soft->at(x, y);
            std::copy(covered.begin(), covered.end(), shown);
            if (!clip().soft) return;
            const std::uint8_t* before = clip().soft->at(x, y);
            for (std::size_t i = 0; i < covered.size(); ++i)
                shown[i] = static_cast<std::uint8_t>(scaledBytes(shown[i], before[i]));
        });
        return soft;
    }

    APixels pixels;
    std::vector<Clip> clips;  // the first is the canvas
    AOutlineCoverage coverage;
    std::vector<std::uint32_t> colors;  // scratch
};

ACanvas::ACanvas(const APixels& pixels) : m_library(std::make_unique<Library>(pixels)) {}
ACanvas::~ACanvas() = default;

void ACanvas::fill(const APath& path, const AAffine& toPixels, const APaint& paint, EFillRule rule) {
    if (const std::unique_ptr<APaintShader> shader = shaderOf(paint))
        m_library->fill(path, toPixels, rule, *shader);
}

void ACanvas::stroke(const APath& path, const AAffine& toPixels, const APaint& paint,
                     const AStrokeStyle& style) {
    if (!(style.width > 0) || !isUsable(toPixels) || !std::isfinite(style.miterLimit) ||
        !std::isfinite(style.dashOffset)) {
        return;
    }
    const double scale = largestScale(toPixels);
    if (!(style.width * scale / 2 < kWidestPen)) return;
    const std::optional<AFRect> box = place(path, toPixels);
    if (!box) return;
    const double reach = reachOf(style, scale);
    const RECT area = touched(*box, reach, m_library->clip().bounds);
    const std::unique_ptr<APaintShader> shader = shaderOf(paint);
    if (isEmpty(area) || !shader) return;
    const double margin = reach + 2;
    const APath drawn =
        penPath(path, toPixels, *box, style,
                {area.left - margin, area.top - margin, area.right + margin, area.bottom + margin});
    m_library->coverage.stroke(drawn, toPixels, style, area, [&](int x, int y, Coverage covered) {
        m_library->mix(x, y, covered, *shader, EBlend::normal);
    });
}

void ACanvas::drawImage(const AImage& image, const AAffine& toPixels, double opacity, bool smooth,
                        EBlend blend) {
    const std::unique_ptr<APaintShader> shader = shaderOf(image, toPixels, opacity, smooth);
    if (!shader) return;
    const APath frame =
        APath::rectangle({0, 0, static_cast<double>(image.width()), static_cast<double>(image.height())});
    m_library->fill(frame, toPixels, EFillRule::nonZero, *shader, blend);
}

void ACanvas::pushClip(const APath& path, const AAffine& toPixels, EFillRule rule) {
    m_library->pushClip(path, toPixels, rule);
}

void ACanvas::popClip() {
    if (m_library->clips.size() > 1) m_library->clips.pop_back();
}

RECT ACanvas::clipBounds() const {
    return m_library->clip().bounds;
}

void ACanvas::flush() {}

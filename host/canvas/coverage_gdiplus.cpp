// Where GDI+ antialiases, outlines are drawn white on black, square by square, and the white is read. Where
// it does not (Wine), the outline's region is taken many times as large, and what falls into each pixel is
// added up: exact to a sample, and far quicker there than drawing.
#include <algorithm>
#include <array>
#include <cmath>
#include <new>

#include "canvas/gdiplus_startup.h"
#include "canvas/outline_coverage.h"
#include "canvas/path_cutting.h"

// <gdiplus.h> takes min and max from where it stands.
using std::max;
using std::min;

#include <objidl.h>

#include <gdiplus.h>

namespace {

// The side of a square in pixels: what single-precision coordinates still place well.
constexpr int kSide = 2048;
// Where an outline is cut, in samples: GDI+ counts no farther than 2^27 sixteenths.
constexpr double kFar = 1 << 18;
// Samples of a pixel in each direction, where GDI+ does not antialias.
constexpr int kSamples = 8;
// The thinnest line, in samples: GDI+ draws none thinner than a pixel, and regions have corners on whole
// samples. A thinner line becomes a fainter one.
constexpr double kThinnestDrawn = 1;
constexpr double kThinnestSampled = 2;

void check(Gdiplus::Status status) {
    if (status == Gdiplus::OutOfMemory) throw std::bad_alloc();
}

Gdiplus::Color white() {
    return {255, 255, 255, 255};
}

// A path as GDI+ takes it, in one piece.
class Outline {
public:
    explicit Outline(const APath& path) {
        m_points.reserve(path.points().size());
        m_types.reserve(path.points().size());
        const AFPoint* point = path.points().data();
        bool isStarted = false;
        for (APath::EVerb verb : path.verbs()) {
            if (verb == APath::EVerb::move) {
                m_start = *point++;
                isStarted = false;
                continue;
            }
            if (verb == APath::EVerb::close) {
                if (isStarted) m_types.back() |= Gdiplus::PathPointTypeCloseSubpath;
                // What follows starts where the closed figure did.
                isStarted = false;
                continue;
            }
            if (!isStarted) add(m_start, Gdiplus::PathPointTypeStart);
            isStarted = true;
            const bool isCurve = verb == APath::EVerb::curve;
            for (int i = isCurve ? 3 : 1; i > 0; --i)
                add(*point++, isCurve ? Gdiplus::PathPointTypeBezier : Gdiplus::PathPointTypeLine);
        }
    }

    // Null without figures.
    std::unique_ptr<Gdiplus::GraphicsPath> path(Gdiplus::FillMode mode = Gdiplus::FillModeWinding) const {
        if (m_points.empty()) return nullptr;
        return std::make_unique<Gdiplus::GraphicsPath>(m_points.data(), m_types.data(),
                                                       static_cast<INT>(m_points.size()), mode);
    }

private:
    void add(AFPoint at, BYTE type) {
        m_points.emplace_back(static_cast<float>(at.x), static_cast<float>(at.y));
        m_types.push_back(type);
    }

    AFPoint m_start;
    std::vector<Gdiplus::PointF> m_points;
    std::vector<BYTE> m_types;
};

// The pixels of one square, one byte of each being the coverage.
struct Square {
    Square(int across, int down)
        : width(across),
          height(down),
          pixels(static_cast<std::size_t>(width) * static_cast<std::size_t>(height)),
          bitmap(width, height, width * 4, PixelFormat32bppRGB, reinterpret_cast<BYTE*>(pixels.data())),
          graphics(&bitmap) {
        check(bitmap.GetLastStatus());
        check(graphics.GetLastStatus());
        graphics.SetSmoothingMode(Gdiplus::SmoothingModeAntiAlias);
        // Pixel edges at whole numbers, as in device coordinates everywhere else.
        graphics.SetPixelOffsetMode(Gdiplus::PixelOffsetModeHalf);
    }

    void clear(int across, int down) {
        for (int y = 0; y < down; ++y) std::fill_n(row(y), across, 0u);
    }
    std::uint32_t* row(int y) {
        return pixels.data() + static_cast<std::size_t>(y) * static_cast<std::size_t>(width);
    }

    int width;
    int height;
    std::vector<std::uint32_t> pixels;
    Gdiplus::Bitmap bitmap;
    Gdiplus::Graphics graphics;
};

// Whether half a pixel shows as such.
bool antialiases() {
    Square square(1, 1);
    Gdiplus::SolidBrush brush(white());
    const std::array<Gdiplus::PointF, 3> half{{{0, 0}, {1, 0}, {0, 1}}};
    square.graphics.FillPolygon(&brush, half.data(), static_cast<INT>(half.size()));
    square.graphics.Flush(Gdiplus::FlushIntentionSync);
    const std::uint32_t shown = *square.row(0) & 0xff;
    return shown > 0 && shown < 255;
}

Gdiplus::LineCap capOf(ELineCap cap) {
    static constexpr std::array<Gdiplus::LineCap, 3> kCaps{Gdiplus::LineCapFlat, Gdiplus::LineCapRound,
                                                           Gdiplus::LineCapSquare};
    return kCaps[static_cast<std::size_t>(cap)];
}

Gdiplus::LineJoin joinOf(ELineJoin join) {
    static constexpr std::array<Gdiplus::LineJoin, 3> kJoins{Gdiplus::LineJoinMiterClipped,
                                                             Gdiplus::LineJoinRound, Gdiplus::LineJoinBevel};
    return kJoins[static_cast<std::size_t>(join)];
}

// Discs at the corners of the outline: Wine widens round joins as if they were bevels.
std::unique_ptr<Gdiplus::GraphicsPath> discsAtJoins(const Gdiplus::GraphicsPath& outline, float radius) {
    auto discs = std::make_unique<Gdiplus::GraphicsPath>(Gdiplus::FillModeWinding);
    Gdiplus::PathData data;
    if (outline.GetPathData(&data) != Gdiplus::Ok) return discs;
    const auto kind = [&](INT i) { return data.Types[i] & Gdiplus::PathPointTypePathTypeMask; };
    const auto add = [&](INT i) {
        const Gdiplus::PointF& at = data.Points[i];
        discs->AddEllipse(at.X - radius, at.Y - radius, radius * 2, radius * 2);
    };
    INT first = 0;
    for (INT i = 0; i < data.Count; ++i) {
        if (kind(i) == Gdiplus::PathPointTypeStart) first = i;
        // The control points of a curve are no corners.
        if (kind(i) == Gdiplus::PathPointTypeBezier) i += 2;
        if (i >= data.Count) break;
        if (data.Types[i] & Gdiplus::PathPointTypeCloseSubpath) add(first);
        const bool isEnd = i == first || i + 1 == data.Count || kind(i + 1) == Gdiplus::PathPointTypeStart;
        if (!isEnd || (i != first && (data.Types[i] & Gdiplus::PathPointTypeCloseSubpath))) add(i);
    }
    return discs;
}

bool keepsShapes(const AAffine& t) {
    return (t.a == t.d && t.b == -t.c) || (t.a == -t.d && t.b == t.c);
}

}  // namespace

struct AOutlineCoverage::Library {
    // An outline in samples of a square.
    struct Shape {
        std::unique_ptr<Gdiplus::GraphicsPath> path;  // null: nothing to see
        const Gdiplus::Pen* pen = nullptr;            // null: filled
        AAffine transform{};                          // of path and pen, linear
    };

    Library() {
        ensureGdiplus();
        static const bool smooth = antialiases();
        isSmooth = smooth;
        samples = smooth ? 1 : kSamples;
    }

    // Calls `shapeIn` for every square, with the transform from pixels to the square's samples, and tells
    // what the shape covers. `strength`: what covering a pixel counts for, from 0 to 1.
    template <class ShapeIn>
    void eachSquare(const RECT& area, double strength, const Told& told, ShapeIn shapeIn) {
        for (int top = area.top; top < area.bottom; top += kSide) {
            for (int left = area.left; left < area.right; left += kSide) {
                width = std::min<int>(kSide, area.right - left);
                height = std::min<int>(kSide, area.bottom - top);
                Shape shape = shapeIn(AAffine::scaling(samples) * AAffine::translation(-left, -top));
                if (!shape.path) continue;
                check(shape.path->GetLastStatus());
                sums.assign(static_cast<std::size_t>(width) * static_cast<std::size_t>(height), 0);
                isSmooth ? draw(shape) : sample(shape);
                covered.resize(static_cast<std::size_t>(width));
                for (int y = 0; y < height; ++y) {
                    const double scale = strength * 255 / (isSmooth ? 255 : samples * samples);
                    std::transform(sumRow(y), sumRow(y) + width, covered.begin(), [&](std::uint8_t sum) {
                        return static_cast<std::uint8_t>(sum * scale + 0.5);
                    });
                    told(left, top + y, covered);
                }
            }
        }
    }

    std::uint8_t* sumRow(int y) {
        return sums.data() + static_cast<std::size_t>(y) * static_cast<std::size_t>(width);
    }

    void draw(const Shape& shape) {
        reserve();
        square->clear(width, height);
        Gdiplus::Graphics& graphics = square->graphics;
        const AAffine& t = shape.transform;
        const Gdiplus::Matrix matrix(static_cast<float>(t.a), static_cast<float>(t.b),
                                     static_cast<float>(t.c), static_cast<float>(t.d), 0, 0);
        graphics.SetTransform(&matrix);
        const Gdiplus::SolidBrush brush(white());
        check(shape.pen ? graphics.DrawPath(shape.pen, shape.path.get())
                        : graphics.FillPath(&brush, shape.path.get()));
        graphics.Flush(Gdiplus::FlushIntentionSync);
        for (int y = 0; y < height; ++y) {
            std::transform(square->row(y), square->row(y) + width, sumRow(y),
                           [](std::uint32_t pixel) { return static_cast<std::uint8_t>(pixel); });
        }
    }

    void reserve() {
        if (square && width <= square->width && height <= square->height) return;
        const int across = std::max(width, square ? square->width : 0);
        const int down = std::max(height, square ? square->height : 0);
        square.reset();
        square = std::make_unique<Square>(across, down);
    }

    void sample(const Shape& shape) {
        std::unique_ptr<Gdiplus::GraphicsPath> discs;
        if (shape.pen) {
            if (shape.pen->GetLineJoin() == Gdiplus::LineJoinRound)
                discs = discsAtJoins(*shape.path, shape.pen->GetWidth() / 2);
            constexpr float kFlatness = 0.5;
            check(shape.path->Widen(shape.pen, nullptr, kFlatness));
            shape.path->SetFillMode(Gdiplus::FillModeWinding);
        }
        const AAffine& t = shape.transform;
        const Gdiplus::Matrix matrix(static_cast<float>(t.a), static_cast<float>(t.b),
                                     static_cast<float>(t.c), static_cast<float>(t.d), 0, 0);
        shape.path->Transform(&matrix);
        Gdiplus::Region region(shape.path.get());
        check(region.GetLastStatus());
        if (discs && discs->GetPointCount() > 0) {
            discs->Transform(&matrix);
            check(region.Union(discs.get()));
        }
        const Gdiplus::Matrix asItIs;
        std::vector<Gdiplus::Rect> boxes(region.GetRegionScansCount(&asItIs));
        auto count = static_cast<INT>(boxes.size());
        if (count == 0 || region.GetRegionScans(&asItIs, boxes.data(), &count) != Gdiplus::Ok) return;
        for (const Gdiplus::Rect& box : boxes) addSamples(box);
    }

    void addSamples(const Gdiplus::Rect& box) {
        const int left = std::max(box.X, 0);
        const int top = std::max(box.Y, 0);
        const int right = std::min(box.X + box.Width, width * samples);
        const int bottom = std::min(box.Y + box.Height, height * samples);
        // How many of its samples the pixel has between two samples.
        const auto within = [this](int pixel, int first, int last) {
            return std::min(last, (pixel + 1) * samples) - std::max(first, pixel * samples);
        };
        for (int y = top / samples; y * samples < bottom && top < bottom; ++y) {
            const int lines = within(y, top, bottom);
            std::uint8_t* sum = sumRow(y);
            for (int x = left / samples; x * samples < right && left < right; ++x)
                sum[x] = static_cast<std::uint8_t>(sum[x] + lines * within(x, left, right));
        }
    }

    bool isSmooth = true;
    int samples = 1;
    std::unique_ptr<Square> square;
    // Of the present square, in pixels.
    int width = 0;
    int height = 0;
    std::vector<std::uint8_t> sums;  // how many samples are covered; or the white that was drawn
    std::vector<std::uint8_t> covered;
};

AOutlineCoverage::AOutlineCoverage() : m_library(std::make_unique<Library>()) {}
AOutlineCoverage::~AOutlineCoverage() = default;

void AOutlineCoverage::fill(const APath& path, const AAffine& toPixels, EFillRule rule, const RECT& area,
                            const Told& told) {
    const Gdiplus::FillMode mode =
        rule == EFillRule::evenOdd ? Gdiplus::FillModeAlternate : Gdiplus::FillModeWinding;
    m_library->eachSquare(area, 1, told, [&](const AAffine& toSamples) -> Library::Shape {
        APath placed = transformed(path, toSamples * toPixels);
        if (!placed.isFinite()) return {};
        const AFRect box = placed.bounds();
        if (box.left < -kFar || box.top < -kFar || box.right > kFar || box.bottom > kFar)
            placed = cutForFill(placed, AAffine(), {-kFar, -kFar, kFar, kFar});
        return {Outline(placed).path(mode)};
    });
}

void AOutlineCoverage::stroke(const APath& path, const AAffine& toPixels, const AStrokeStyle& pen,
                              const RECT& area, const Told& told) {
    const double thinnest = m_library->isSmooth ? kThinnestDrawn : kThinnestSampled;
    const double width = pen.width * toPixels.scale() * m_library->samples;
    Gdiplus::Pen drawing(white(), static_cast<float>(std::max(width, thinnest)));
    drawing.SetLineCap(capOf(pen.cap), capOf(pen.cap), Gdiplus::DashCapFlat);
    drawing.SetLineJoin(joinOf(pen.join));
    drawing.SetMiterLimit(static_cast<float>(std::max(pen.miterLimit, 1.0)));
    const double strength = std::min(width / thinnest, 1.0);
    m_library->eachSquare(area, strength, told, [&](const AAffine& toSamples) -> Library::Shape {
        const AAffine whole = toSamples * toPixels;
        if (keepsShapes(whole)) return {Outline(transformed(path, whole)).path(), &drawing};
        // The pen's own shape comes from a transform that makes no lengths longer or shorter on average, of
        // an outline that starts near the square.
        const double scale = whole.scale();
        const std::optional<AAffine> back = whole.inverse();
        if (!back || !(scale > 0)) return {};
        const AFPoint origin = back->apply({0, 0});
        const AAffine toShape = AAffine::scaling(scale) * AAffine::translation(-origin.x, -origin.y);
        return {Outline(transformed(path, toShape)).path(),
                &drawing,
                {whole.a / scale, whole.b / scale, whole.c / scale, whole.d / scale, 0, 0}};
    });
}

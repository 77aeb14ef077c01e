// Outlines are drawn white on black, square by square, and the white is read.
#include <algorithm>
#include <array>
#include <cmath>
#include <new>

#include "kzcore/gdiplus_startup.h"
#include "kzcore/outline_coverage.h"
#include "kzcore/path_cutting.h"

// <gdiplus.h> takes min and max from where it stands.
using std::max;
using std::min;

#include <objidl.h>

#include <gdiplus.h>

namespace {

// The side of a square in samples: what single-precision coordinates still place well.
constexpr int kSide = 2048;
// Where an outline is cut, in samples: GDI+ counts no farther than 2^27 sixteenths.
constexpr double kFar = 1 << 16;
// Samples of a pixel in each direction, where GDI+ does not antialias.
constexpr int kSamples = 4;

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

    bool empty() const { return m_points.empty(); }
    const Gdiplus::PointF* points() const { return m_points.data(); }
    const BYTE* types() const { return m_types.data(); }
    INT size() const { return static_cast<INT>(m_points.size()); }

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
    Square(int width, int height)
        : pixels(static_cast<std::size_t>(width) * static_cast<std::size_t>(height)),
          stride(static_cast<std::size_t>(width)),
          bitmap(width, height, width * 4, PixelFormat32bppRGB, reinterpret_cast<BYTE*>(pixels.data())),
          graphics(&bitmap) {
        check(bitmap.GetLastStatus());
        check(graphics.GetLastStatus());
        graphics.SetSmoothingMode(Gdiplus::SmoothingModeAntiAlias);
        // Pixel edges at whole numbers, as in device coordinates everywhere else.
        graphics.SetPixelOffsetMode(Gdiplus::PixelOffsetModeHalf);
    }

    void clear(int width, int height) {
        for (int y = 0; y < height; ++y) std::fill_n(row(y), width, 0u);
    }
    std::uint32_t* row(int y) { return &pixels[static_cast<std::size_t>(y) * stride]; }

    std::vector<std::uint32_t> pixels;
    std::size_t stride;
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

bool keepsShapes(const AAffine& t) {
    return (t.a == t.d && t.b == -t.c) || (t.a == -t.d && t.b == t.c);
}

}  // namespace

struct AOutlineCoverage::Library {
    Library() {
        ensureGdiplus();
        static const bool smooth = antialiases();
        samples = smooth ? 1 : kSamples;
    }

    // Calls `draw` for every square, with the transform from pixels to the square's samples, and tells what
    // it drew. `strength`: what white stands for, from 0 to 1.
    template <class Draw>
    void eachSquare(const RECT& area, double strength, const Told& told, Draw draw) {
        const int side = kSide / samples;
        for (int top = area.top; top < area.bottom; top += side) {
            for (int left = area.left; left < area.right; left += side) {
                const int width = std::min<int>(side, area.right - left);
                const int height = std::min<int>(side, area.bottom - top);
                reserve(width * samples, height * samples);
                square->clear(width * samples, height * samples);
                draw(square->graphics, AAffine::scaling(samples) * AAffine::translation(-left, -top));
                square->graphics.Flush(Gdiplus::FlushIntentionSync);
                covered.resize(static_cast<std::size_t>(width));
                for (int y = 0; y < height; ++y) {
                    readRow(y, strength);
                    told(left, top + y, covered);
                }
            }
        }
    }

    void reserve(int width, int height) {
        if (width <= reservedWidth && height <= reservedHeight) return;
        width = std::max(width, reservedWidth);
        height = std::max(height, reservedHeight);
        square.reset();
        reservedWidth = reservedHeight = 0;
        square = std::make_unique<Square>(width, height);
        reservedWidth = width;
        reservedHeight = height;
    }

    void readRow(int y, double strength) {
        sums.assign(covered.size(), 0);
        for (int line = 0; line < samples; ++line) {
            const std::uint32_t* sample = square->row(y * samples + line);
            for (std::uint32_t& sum : sums)
                for (int i = 0; i < samples; ++i) sum += *sample++ & 0xff;
        }
        const double scale = strength / (samples * samples);
        std::transform(sums.begin(), sums.end(), covered.begin(),
                       [&](std::uint32_t sum) { return static_cast<std::uint8_t>(sum * scale + 0.5); });
    }

    int samples = 1;
    std::unique_ptr<Square> square;
    int reservedWidth = 0;
    int reservedHeight = 0;
    std::vector<std::uint32_t> sums;
    std::vector<std::uint8_t> covered;
};

AOutlineCoverage::AOutlineCoverage() : m_library(std::make_unique<Library>()) {}
AOutlineCoverage::~AOutlineCoverage() = default;

void AOutlineCoverage::fill(const APath& path, const AAffine& toPixels, EFillRule rule, const RECT& area,
                            const Told& told) {
    const Gdiplus::SolidBrush brush(white());
    const Gdiplus::FillMode mode =
        rule == EFillRule::evenOdd ? Gdiplus::FillModeAlternate : Gdiplus::FillModeWinding;
    m_library->eachSquare(area, 1, told, [&](Gdiplus::Graphics& graphics, const AAffine& toSamples) {
        APath placed = transformed(path, toSamples * toPixels);
        if (!placed.isFinite()) return;
        const AFRect box = placed.bounds();
        if (box.left < -kFar || box.top < -kFar || box.right > kFar || box.bottom > kFar)
            placed = cutForFill(placed, AAffine(), {-kFar, -kFar, kFar, kFar});
        const Outline outline(placed);
        if (outline.empty()) return;
        const Gdiplus::GraphicsPath drawn(outline.points(), outline.types(), outline.size(), mode);
        check(drawn.GetLastStatus());
        check(graphics.FillPath(&brush, &drawn));
    });
}

void AOutlineCoverage::stroke(const APath& path, const AAffine& toPixels, const AStrokeStyle& pen,
                              const RECT& area, const Told& told) {
    const double pixelWidth = pen.width * toPixels.scale();
    const double sampleWidth = pixelWidth * m_library->samples;
    // GDI+ draws no line thinner than a pixel: a thinner one becomes a fainter one.
    const double strength = std::min(sampleWidth, 1.0);
    const double width = std::max(sampleWidth, 1.0);
    Gdiplus::Pen drawing(white(), static_cast<float>(width));
    drawing.SetLineCap(capOf(pen.cap), capOf(pen.cap), Gdiplus::DashCapFlat);
    drawing.SetLineJoin(joinOf(pen.join));
    drawing.SetMiterLimit(static_cast<float>(std::max(pen.miterLimit, 1.0)));
    m_library->eachSquare(area, strength, told, [&](Gdiplus::Graphics& graphics, const AAffine& toSamples) {
        const AAffine whole = toSamples * toPixels;
        const double scale = whole.scale();
        // The pen's own shape comes from the transform of the graphics: one that makes no lengths longer or
        // shorter on average, and starts near the outline.
        AAffine shape;
        AAffine toShape = whole;
        if (!keepsShapes(whole)) {
            const std::optional<AAffine> back = whole.inverse();
            if (!back || !(scale > 0)) return;
            const AFPoint origin = back->apply({0, 0});
            shape = {whole.a / scale, whole.b / scale, whole.c / scale, whole.d / scale, 0, 0};
            toShape = AAffine::scaling(scale) * AAffine::translation(-origin.x, -origin.y);
        }
        const Outline outline(transformed(path, toShape));
        if (outline.empty()) return;
        const Gdiplus::GraphicsPath drawn(outline.points(), outline.types(), outline.size());
        check(drawn.GetLastStatus());
        const Gdiplus::Matrix matrix(static_cast<float>(shape.a), static_cast<float>(shape.b),
                                     static_cast<float>(shape.c), static_cast<float>(shape.d), 0, 0);
        graphics.SetTransform(&matrix);
        check(graphics.DrawPath(&drawing, &drawn));
        graphics.ResetTransform();
    });
}

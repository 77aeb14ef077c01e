#include "formats/svg/draw/text/text_path.h"

#include <algorithm>
#include <cmath>

#include "formats/svg/values/path_data.h"

namespace svg {

namespace {

constexpr std::size_t kMostPieces = std::size_t{1} << 18;
constexpr double kMostPiecesOfCurve = 256;

double distance(AFPoint a, AFPoint b) {
    return std::hypot(b.x - a.x, b.y - a.y);
}

// The outline in the space of the text: that of the path referred to, with its transform, or its own.
APath outlineOf(DrawContext& context, pugi::xml_node textPath) {
    APath outline;
    const std::string_view own = textOf(textPath, "path");
    if (!own.empty()) {
        appendPath(own, outline);
        return outline;
    }
    const std::string_view id = referenceOf(textPath);
    const pugi::xml_node path = id.empty() ? pugi::xml_node() : context.tree().findAny(id);
    if (kindOf(path) != Element::path) return outline;
    appendPath(textOf(path, "d"), outline);
    APath placed;
    placed.append(outline, parseTransform(textOf(path, "transform")));
    return placed;
}

}  // namespace

TextPath::TextPath(DrawContext& context, pugi::xml_node textPath, const UserSpace& space, double fontSize) {
    const APath outline = outlineOf(context, textPath);
    if (!outline.isFinite()) return;
    outline.forEachSegment([&](const APath::Segment& one) {
        if (m_pieces.size() >= kMostPieces) return;
        if (one.verb == APath::EVerb::move) {
            m_at = one.to;
        } else if (one.verb == APath::EVerb::curve) {
            addCurve(one, fontSize);
        } else {
            addLine(one.to);
        }
    });
    if (!std::isfinite(m_length)) {
        m_pieces.clear();
        m_length = 0;
    }
    const LengthContext lengths{fontSize, space.width, space.height};
    std::string_view offset = textOf(textPath, "startOffset");
    if (offset.ends_with('%')) {
        double percent = 0;
        if (takeNumber(offset, percent)) m_start = finite(m_length * percent / 100);
    } else {
        parseLength(offset, Axis::horizontal, lengths, m_start);
        // In the length that the path says it has.
        double counted = 0;
        const pugi::xml_node path = context.tree().findAny(referenceOf(textPath));
        if (parseLength(textOf(path, "pathLength"), Axis::both, {}, counted) && counted > 0)
            m_start = finite(m_start * m_length / counted);
    }
}

void TextPath::addLine(AFPoint to) {
    const double length = distance(m_at, to);
    if (length > 0) m_pieces.push_back({m_at, to, m_length});
    m_length += length;
    m_at = to;
}

void TextPath::addCurve(const APath::Segment& curve, double fontSize) {
    const auto& [verb, from, first, second, to] = curve;
    const double around = distance(from, first) + distance(first, second) + distance(second, to);
    const double finest = std::max(fontSize / 16, around / kMostPiecesOfCurve);
    const int count = finest > 0 ? static_cast<int>(std::clamp(around / finest, 8.0, kMostPiecesOfCurve)) : 1;
    for (int i = 1; i <= count; ++i) {
        const double t = static_cast<double>(i) / count;
        const double s = 1 - t;
        const double weights[] = {s * s * s, 3 * s * s * t, 3 * s * t * t, t * t * t};
        addLine({weights[0] * from.x + weights[1] * first.x + weights[2] * second.x + weights[3] * to.x,
                 weights[0] * from.y + weights[1] * first.y + weights[2] * second.y + weights[3] * to.y});
    }
}

std::optional<AAffine> TextPath::place(double along) const {
    if (m_pieces.empty() || !(along >= 0 && along <= m_length)) return std::nullopt;
    auto found = std::upper_bound(m_pieces.begin(), m_pieces.end(), along,
                                  [](double wanted, const Piece& piece) { return wanted < piece.start; });
    if (found != m_pieces.begin()) --found;
    const double length = distance(found->from, found->to);
    const AFPoint direction{(found->to.x - found->from.x) / length, (found->to.y - found->from.y) / length};
    const double rest = along - found->start;
    return AAffine{direction.x,
                   direction.y,
                   -direction.y,
                   direction.x,
                   found->from.x + direction.x * rest,
                   found->from.y + direction.y * rest};
}

}  // namespace svg

// Three steps: the characters with their styles and positions (text_characters.h), runs of glyphs (text_runs.h), and the
// places of the runs, which are here.
#include "formats/svg/draw/text/text.h"

#include <optional>
#include <utility>

#include "formats/svg/draw/text/text_characters.h"
#include "formats/svg/draw/text/text_path.h"
#include "formats/svg/draw/text/text_runs.h"
#include "formats/svg/values/text_scan.h"
#include "formats/svg/values/units.h"

namespace svg {

namespace {

class Layout {
public:
    Layout(DrawContext& context, const UserSpace& space, const TextCharacters& text, bool vertical)
        : m_context(context), m_space(space), m_text(text), m_vertical(vertical) {}

    void run(std::vector<TextPiece>& pieces) {
        const std::vector<TextRun> runs = makeTextRuns(m_context, m_text, m_vertical);
        for (std::size_t first = 0; first < runs.size();) {
            const std::size_t last = chunkEnd(runs, first);
            if (spanOf(runs[first]).textPath) {
                placeOnPath(runs, first, last);
            } else {
                placeOnLine(runs, first, last);
            }
            first = last;
        }
        finishPiece();
        pieces = std::move(m_pieces);
    }

private:
    const TextSpan& spanOf(const TextRun& run) const {
        return m_text.spans[m_text.characters[run.first].span];
    }

    // How far below the point of the text its base line lies.
    double baselineOffset(const Style& style) {
        const Baseline baseline = style.own.alignment.value_or(style.baseline);
        if (baseline == Baseline::alphabetic) return 0;
        const AFontMetrics& font = fontMetricsOf(m_context, style);
        switch (baseline) {
            case Baseline::alphabetic:
                return 0;
            case Baseline::middle:
                return font.xHeight / 2;
            case Baseline::central:
                return (font.ascent - font.descent) / 2;
            case Baseline::mathematical:
                return font.ascent / 2;
            case Baseline::hanging:
                return font.ascent * 0.8;
            case Baseline::textBefore:
                return font.ascent;
            case Baseline::textAfter:
            case Baseline::ideographic:
                return -font.descent;
        }
        return 0;
    }

    // A chunk is what is anchored together: up to the next absolute position, or the end of a text path.
    std::size_t chunkEnd(const std::vector<TextRun>& runs, std::size_t first) const {
        const pugi::xml_node path = spanOf(runs[first]).textPath;
        std::size_t at = first + 1;
        for (; at < runs.size(); ++at) {
            const bool jumps = !std::isnan(runs[at].x) || !std::isnan(runs[at].y);
            if (spanOf(runs[at]).textPath != path || (jumps && !path)) break;
        }
        return at;
    }

    double anchorShift(const std::vector<TextRun>& runs, std::size_t first, std::size_t last) const {
        const Style& style = spanOf(runs[first]).style;
        TextAnchor anchor = style.textAnchor;
        // A text that runs to the left starts at its right.
        if (style.rightToLeft && anchor != TextAnchor::middle)
            anchor = anchor == TextAnchor::start ? TextAnchor::end : TextAnchor::start;
        if (anchor == TextAnchor::start) return 0;
        double length = 0;
        for (std::size_t i = first; i < last; ++i)
            length += runs[i].advance() + (m_vertical ? runs[i].dy : runs[i].dx);
        // What a text length adds stands between letters, not behind the last one.
        length -= runs[last - 1].lengthSpacing;
        return anchor == TextAnchor::middle ? -length / 2 : -length;
    }

    void placeOnLine(const std::vector<TextRun>& runs, std::size_t first, std::size_t last) {
        const TextRun& start = runs[first];
        if (!std::isnan(start.x)) m_at.x = start.x;
        if (!std::isnan(start.y)) m_at.y = start.y;
        (m_vertical ? m_at.y : m_at.x) += anchorShift(runs, first, last);
        for (std::size_t i = first; i < last; ++i) {
            const TextRun& run = runs[i];
            m_at.x += run.dx;
            m_at.y += run.dy;
            AAffine placed = AAffine::translation(m_at.x, m_at.y);
            if (run.rotate != 0) placed = placed * rotation(run.rotate);
            if (m_vertical) placed = placed * inColumn(run);
            addRun(run, placed);
            (m_vertical ? m_at.y : m_at.x) += run.advance();
        }
    }

    // From a run's base line to a column: the middle of its letters lies on the line, and they are turned, but for those
    // that stand upright.
    AAffine inColumn(const TextRun& run) {
        const AFontMetrics& font = fontMetricsOf(m_context, spanOf(run).style);
        const double middle = (font.ascent - font.descent) / 2;
        if (run.upright) return AAffine::translation(0, run.natural / 2 + middle);
        return AAffine{0, 1, -1, 0, 0, 0} * AAffine::translation(0, middle);
    }

    void placeOnPath(const std::vector<TextRun>& runs, std::size_t first, std::size_t last) {
        const TextSpan& span = spanOf(runs[first]);
        const TextPath path(m_context, span.textPath, m_space, span.style.fontSize);
        const double start = path.start() + anchorShift(runs, first, last);
        double along = start;
        double above = 0;
        for (std::size_t i = first; i < last; ++i) {
            const TextRun& run = runs[i];
            // A position of its own is one along the path.
            if (!std::isnan(run.x)) along = start + run.x;
            along += run.dx;
            above += run.dy;
            const double half = run.width() / 2;
            if (const std::optional<AAffine> placed = path.place(along + half)) {
                AAffine turned = *placed * AAffine::translation(-half, above);
                if (run.rotate != 0) turned = turned * rotation(run.rotate);
                addRun(run, turned);
            }
            along += run.advance();
        }
        if (const std::optional<AAffine> end = path.place(path.length())) m_at = {end->e, end->f};
    }

    // `placed`: from the text's base line to the place of the run.
    void addRun(const TextRun& run, const AAffine& placed) {
        const std::size_t index = m_text.characters[run.first].span;
        const TextSpan& span = m_text.spans[index];
        const Style& style = span.style;
        if (!style.visible || !style.displayed || !placed.isFinite()) return;
        if (!m_open || m_openSpan != index) {
            finishPiece();
            m_open.emplace();
            m_open->style = style;
            m_open->effect = span.effect;
            m_openSpan = index;
        }
        const double shift = baselineOffset(style) - span.baselineShift;
        const AAffine toText = placed * AAffine::translation(0, shift) * AAffine::scaling(run.stretch, 1);
        m_open->outline.add(run.glyphs, toText * AAffine::translation(run.shift, 0));
        const double size = style.fontSize;
        const AFRect line{0, -kAscent * size, run.natural, kDescent * size};
        m_bounds.add(rectBounds(toText, line));
        const double length = run.advance() / (run.stretch != 0 ? run.stretch : 1);
        // A line is as high and as thick as the font of the element that asks for it says.
        const auto addLine = [&](APath& lines, int source, double AFontMetrics::*middle,
                                 double AFontMetrics::*thickness) {
            if (source < 0) return;
            const AFontMetrics& font =
                fontMetricsOf(m_context, m_text.spans[static_cast<std::size_t>(source)].style);
            const double half = font.*thickness / 2;
            lines.append(APath::rectangle({0, -(font.*middle) - half, length, -(font.*middle) + half}),
                         toText);
        };
        addLine(m_underline, span.underline, &AFontMetrics::underline, &AFontMetrics::underlineThickness);
        addLine(m_overline, span.overline, &AFontMetrics::ascent, &AFontMetrics::underlineThickness);
        addLine(m_lineThrough, span.lineThrough, &AFontMetrics::lineThrough,
                &AFontMetrics::lineThroughThickness);
    }

    // Lines are pieces of their own: in one outline they could cut holes into the letters.
    void finishPiece() {
        if (!m_open) return;
        m_open->box = m_bounds.get();
        const TextSpan& span = m_text.spans[m_openSpan];
        addLines(m_underline, span.underline);
        addLines(m_overline, span.overline);
        m_pieces.push_back(std::move(*m_open));
        addLines(m_lineThrough, span.lineThrough);
        m_bounds = BoundsBuilder();
        m_open.reset();
    }

    void addLines(APath& lines, int source) {
        if (lines.empty()) return;
        const Style& style = m_text.spans[static_cast<std::size_t>(source)].style;
        ATextShape outline;
        outline.add(std::make_shared<const ATextOutline>(ATextOutline::ofPath(std::exchange(lines, {}))),
                    AAffine());
        m_pieces.push_back({std::move(outline), m_bounds.get(), style, m_text.spans[m_openSpan].effect});
    }

    DrawContext& m_context;
    const UserSpace& m_space;
    const TextCharacters& m_text;
    AFPoint m_at;  // where the next run starts
    std::vector<TextPiece> m_pieces;
    // The runs of one span that follow each other are one piece.
    std::optional<TextPiece> m_open;
    std::size_t m_openSpan = 0;
    BoundsBuilder m_bounds;
    APath m_underline, m_overline, m_lineThrough;
    bool m_vertical;
};

}  // namespace

void layOutText(DrawContext& context, const DrawnElement& text, std::vector<TextPiece>& pieces) {
    pieces.clear();
    if (!text.style.displayed) return;
    const TextCharacters characters = collectCharacters(context, text);
    // What is repeated may be long: four letters, whose outlines take some two kilobytes, count as an element.
    if (characters.characters.empty() || !context.spend(characters.characters.size() / 4)) return;
    Layout(context, text.space, characters, text.style.vertical).run(pieces);
}

}  // namespace svg

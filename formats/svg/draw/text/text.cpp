// Three steps: the characters with their styles and positions (text_characters.h), runs of glyphs, and the
// places of the runs. What stands in one run is shaped by the text library as a whole, so runs end only where
// the drawing itself moves a character.
#include "formats/svg/draw/text/text.h"

#include <algorithm>
#include <map>
#include <optional>
#include <span>
#include <utility>

#include "formats/svg/draw/text/text_characters.h"
#include "formats/svg/draw/text/text_path.h"
#include "formats/svg/values/text_scan.h"
#include "formats/svg/values/units.h"

namespace svg {

namespace {

// Below this a text length is only another program's measuring of the same glyphs.
constexpr double kSlightStretch = 0.02;
// Letters pushed closer than this would lie upon each other; narrower ones can still be read.
constexpr double kTightest = 0.9;

// Letters of texts that place every one of them, labels that many texts share, and whole texts that are used again.
struct GlyphCache : DrawCache {
    using Key = std::pair<std::string, AFont>;
    static constexpr std::size_t kMostGlyphs = 4096;
    static constexpr std::size_t kMostBytes = std::size_t{1} << 17;  // of texts
    template <class Outlines>
    struct Kept {
        std::map<Key, Outlines> outlines;
        std::size_t bytes = 0;
    };
    Kept<ATextOutline> glyphs;
    Kept<ATextClusters> clusters;
    std::map<AFont, AFontMetrics> metrics;
};

struct Run {
    std::size_t first = 0, last = 0;  // characters
    ATextOutline glyphs;
    double spacing = 0;  // behind it
    double stretch = 1;  // of its width
    // Where the drawing puts it, as its first character says; NaN where it follows the run before.
    double x = kNowhere, y = kNowhere, dx = 0, dy = 0;
    double rotate = 0;     // degrees
    bool upright = false;  // in a vertical text

    double width() const { return glyphs.advance * stretch; }
    double advance() const { return width() + spacing; }
};

// In rising order.
using CodeRange = std::pair<char32_t, char32_t>;

bool isIn(std::span<const CodeRange> ranges, char32_t code) {
    if (code < ranges[0].first) return false;
    return std::any_of(ranges.begin(), ranges.end(), [code](const CodeRange& range) {
        return code >= range.first && code <= range.second;
    });
}

// Letters of scripts whose letters join are not moved apart.
bool joins(char32_t code) {
    constexpr CodeRange kJoining[] = {{0x600, 0x7bf},   {0x7c0, 0x7ff},   {0x840, 0x8ff},  {0x1800, 0x18af},
                                      {0xa840, 0xa87f}, {0xfb50, 0xfdff}, {0xfe70, 0xfeff}};
    return isIn(kJoining, code);
}

// Letters that stand upright in a vertical text: those of East Asia, and pictures.
bool isUpright(char32_t code) {
    constexpr CodeRange kUpright[] = {{0x1100, 0x11ff},   {0x2e80, 0xa4cf},  {0xac00, 0xd7af},
                                      {0xf900, 0xfaff},   {0xfe30, 0xfe4f},  {0xff00, 0xff60},
                                      {0x1f300, 0x1faff}, {0x20000, 0x3ffff}};
    return isIn(kUpright, code);
}

class Layout {
public:
    Layout(DrawContext& context, const UserSpace& space, const TextCharacters& text, bool vertical)
        : m_context(context),
          m_space(space),
          m_text(text),
          m_fits(text.characters.size()),
          m_vertical(vertical) {}

    void run(std::vector<TextPiece>& pieces) {
        fitLengths();
        std::vector<Run> runs;
        makeRuns(0, m_text.characters.size(), runs);
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
    // What a text length asks of a character.
    struct Fit {
        double spacing = 0;
        double stretch = 1;
    };

    const TextSpan& spanOf(const Run& run) const { return m_text.spans[m_text.characters[run.first].span]; }

    std::string_view textOf(std::size_t first, std::size_t last) const {
        const std::size_t begin = m_text.characters[first].begin;
        const std::size_t end = m_text.characters[last - 1].begin + m_text.characters[last - 1].size;
        return std::string_view(m_text.bytes).substr(begin, end - begin);
    }

    template <class Outlines, class Make>
    static Outlines cached(GlyphCache::Kept<Outlines>& cache, std::string_view text, const AFont& font,
                           Make make) {
        if (text.size() > GlyphCache::kMostBytes) return make(text, font);
        GlyphCache::Key key{std::string(text), font};
        const auto found = cache.outlines.find(key);
        if (found != cache.outlines.end()) return found->second;
        if (cache.outlines.size() >= GlyphCache::kMostGlyphs ||
            cache.bytes + text.size() > GlyphCache::kMostBytes) {
            cache.outlines.clear();
            cache.bytes = 0;
        }
        Outlines& made = cache.outlines.emplace(std::move(key), make(text, font)).first->second;
        cache.bytes += text.size();
        return made;
    }

    ATextOutline outline(std::size_t first, std::size_t last) {
        const AFont font = fontOf(m_text.spans[m_text.characters[first].span].style);
        return cached(glyphCache().glyphs, textOf(first, last), font, outlineText);
    }

    GlyphCache& glyphCache() { return m_context.cache<GlyphCache>(CacheOf::texts); }

    const AFontMetrics& metricsOf(const Style& style) {
        auto& metrics = glyphCache().metrics;
        if (metrics.size() >= GlyphCache::kMostGlyphs) metrics.clear();
        AFont font = fontOf(style);
        const auto found = metrics.find(font);
        if (found != metrics.end()) return found->second;
        const AFontMetrics made = fontMetrics(font);
        return metrics.emplace(std::move(font), made).first->second;
    }

    // How far below the point of the text its base line lies.
    double baselineOffset(const Style& style) {
        const Baseline baseline = style.own.alignment.value_or(style.baseline);
        if (baseline == Baseline::alphabetic) return 0;
        const AFontMetrics& font = metricsOf(style);
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

    // Whether the drawing says where a character goes.
    static bool isPlaced(const TextCharacter& one) {
        return !std::isnan(one.x) || !std::isnan(one.y) || one.dx != 0 || one.dy != 0;
    }

    // The end of what one span says, which is shaped as a whole.
    std::size_t segmentEnd(std::size_t first, std::size_t end) const {
        std::size_t at = first;
        while (at < end && m_text.characters[at].span == m_text.characters[first].span) ++at;
        return at;
    }

    // Whether letters of a segment are placed one by one.
    bool isLoose(std::size_t first, std::size_t last) const {
        const TextSpan& span = m_text.spans[m_text.characters[first].span];
        if (span.textPath || span.style.letterSpacing != 0) return true;
        for (std::size_t i = first; i < last; ++i) {
            const TextCharacter& one = m_text.characters[i];
            if ((i != first && isPlaced(one)) || one.rotate != 0 || m_fits[i].spacing != 0 ||
                (span.style.wordSpacing != 0 && one.code == ' ') || (m_vertical && isUpright(one.code))) {
                return true;
            }
        }
        return false;
    }

    Run makeRun(std::size_t first, std::size_t last, ATextOutline glyphs) const {
        const TextCharacter& one = m_text.characters[first];
        const Style& style = m_text.spans[one.span].style;
        Run run{first,
                last,
                std::move(glyphs),
                m_fits[first].spacing,
                m_fits[first].stretch,
                one.x,
                one.y,
                one.dx,
                one.dy,
                one.rotate,
                m_vertical && isUpright(one.code)};
        if (!joins(one.code)) run.spacing += style.letterSpacing;
        if (m_text.characters[last - 1].code == ' ') run.spacing += style.wordSpacing;
        if (run.upright) run.glyphs.path = moved(run.glyphs, style);
        return run;
    }

    // An upright letter of a vertical text stands in the middle of its line; its advance is its height.
    static APath moved(ATextOutline& glyphs, const Style& style) {
        APath path;
        path.append(glyphs.path, AAffine::translation(-glyphs.advance / 2, 0));
        glyphs.advance = style.fontSize;
        return path;
    }

    void makeRuns(std::size_t first, std::size_t end, std::vector<Run>& runs) {
        while (first < end) {
            const std::size_t last = segmentEnd(first, end);
            if (isLoose(first, last)) {
                makeLooseRuns(first, last, runs);
            } else {
                runs.push_back(makeRun(first, last, outline(first, last)));
            }
            first = last;
        }
    }

    // A run for each letter of a segment, shaped with those beside it.
    void makeLooseRuns(std::size_t first, std::size_t last, std::vector<Run>& runs) {
        const AFont font = fontOf(m_text.spans[m_text.characters[first].span].style);
        ATextClusters clusters = cached(glyphCache().clusters, textOf(first, last), font, outlineClusters);
        const std::size_t start = m_text.characters[first].begin;
        const std::size_t before = runs.size();
        std::size_t at = first;
        for (ATextCluster& cluster : clusters.list) {
            const std::size_t begin = at;
            while (at < last && m_text.characters[at].begin - start < cluster.end) ++at;
            // Marks stay with their letter, wherever the drawing puts them.
            if (at > begin) runs.push_back(makeRun(begin, at, std::move(cluster.outline)));
        }
        if (clusters.rightToLeft) turnRound(runs, before);
    }

    // Letters that run to the left stand in the opposite order, up to the next that the drawing places.
    static void turnRound(std::vector<Run>& runs, std::size_t first) {
        while (first < runs.size()) {
            std::size_t last = first + 1;
            while (last < runs.size() && std::isnan(runs[last].x) && std::isnan(runs[last].y)) ++last;
            const double x = std::exchange(runs[first].x, kNowhere);
            const double y = std::exchange(runs[first].y, kNowhere);
            std::reverse(runs.begin() + static_cast<std::ptrdiff_t>(first),
                         runs.begin() + static_cast<std::ptrdiff_t>(last));
            runs[first].x = x;
            runs[first].y = y;
            first = last;
        }
    }

    // The elements that say how long they are, innermost last and so in force.
    void fitLengths() {
        constexpr std::size_t kMostMeasured = 4 * kMostCharacters;
        std::size_t measured = 0;
        for (const TextSpan& span : m_text.spans) {
            const std::size_t count = span.last - span.first;
            if (!(span.textLength > 0) || count < 2 || (measured += count) > kMostMeasured) continue;
            std::vector<Run> runs;
            makeRuns(span.first, span.last, runs);
            double natural = 0;
            for (const Run& run : runs) natural += run.advance();
            if (!(natural > 0)) continue;
            Fit fit;
            const double stretch = span.textLength / natural;
            const bool slight = std::fabs(stretch - 1) < kSlightStretch;
            if (span.stretchesGlyphs || slight || stretch < kTightest) {
                fit.stretch = stretch;
            } else {
                fit.spacing = (span.textLength - natural) / static_cast<double>(count - 1);
            }
            std::fill(m_fits.begin() + static_cast<std::ptrdiff_t>(span.first),
                      m_fits.begin() + static_cast<std::ptrdiff_t>(span.last), fit);
        }
    }

    // A chunk is what is anchored together: up to the next absolute position, or the end of a text path.
    std::size_t chunkEnd(const std::vector<Run>& runs, std::size_t first) const {
        const pugi::xml_node path = spanOf(runs[first]).textPath;
        std::size_t at = first + 1;
        for (; at < runs.size(); ++at) {
            const bool jumps = !std::isnan(runs[at].x) || !std::isnan(runs[at].y);
            if (spanOf(runs[at]).textPath != path || (jumps && !path)) break;
        }
        return at;
    }

    double anchorShift(const std::vector<Run>& runs, std::size_t first, std::size_t last) const {
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
        length -= m_fits[runs[last - 1].last - 1].spacing;
        return anchor == TextAnchor::middle ? -length / 2 : -length;
    }

    void placeOnLine(const std::vector<Run>& runs, std::size_t first, std::size_t last) {
        const Run& start = runs[first];
        if (!std::isnan(start.x)) m_at.x = start.x;
        if (!std::isnan(start.y)) m_at.y = start.y;
        (m_vertical ? m_at.y : m_at.x) += anchorShift(runs, first, last);
        for (std::size_t i = first; i < last; ++i) {
            const Run& run = runs[i];
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
    AAffine inColumn(const Run& run) {
        const AFontMetrics& font = metricsOf(spanOf(run).style);
        const double middle = (font.ascent - font.descent) / 2;
        if (run.upright) return AAffine::translation(0, run.glyphs.advance / 2 + middle);
        return AAffine{0, 1, -1, 0, 0, 0} * AAffine::translation(0, middle);
    }

    void placeOnPath(const std::vector<Run>& runs, std::size_t first, std::size_t last) {
        const TextSpan& span = spanOf(runs[first]);
        const TextPath path(m_context, span.textPath, m_space, span.style.fontSize);
        const double start = path.start() + anchorShift(runs, first, last);
        double along = start;
        double above = 0;
        for (std::size_t i = first; i < last; ++i) {
            const Run& run = runs[i];
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
    void addRun(const Run& run, const AAffine& placed) {
        const std::size_t index = m_text.characters[run.first].span;
        const TextSpan& span = m_text.spans[index];
        const Style& style = span.style;
        if (!style.visible || !style.displayed || !placed.isFinite()) return;
        if (!m_open || m_openSpan != index) {
            finishPiece();
            m_open.emplace();
            m_open->style = style;
            m_openSpan = index;
        }
        const double shift = baselineOffset(style) - span.baselineShift;
        const AAffine toText = placed * AAffine::translation(0, shift) * AAffine::scaling(run.stretch, 1);
        m_open->outline.append(run.glyphs.path, toText);
        const double size = style.fontSize;
        const AFRect line{0, -kAscent * size, run.glyphs.advance, kDescent * size};
        m_bounds.add(rectBounds(toText, line));
        const double length = run.advance() / (run.stretch != 0 ? run.stretch : 1);
        // A line is as high and as thick as the font of the element that asks for it says.
        const auto addLine = [&](APath& lines, int source, double AFontMetrics::*middle,
                                 double AFontMetrics::*thickness) {
            if (source < 0) return;
            const AFontMetrics& font = metricsOf(m_text.spans[static_cast<std::size_t>(source)].style);
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
        m_pieces.push_back(*m_open);
        addLines(m_lineThrough, span.lineThrough);
        m_bounds = BoundsBuilder();
        m_open.reset();
    }

    void addLines(APath& lines, int source) {
        if (lines.empty()) return;
        const Style& style = m_text.spans[static_cast<std::size_t>(source)].style;
        m_pieces.push_back({std::move(lines), m_open->box, style});
        lines.clear();
    }

    DrawContext& m_context;
    const UserSpace& m_space;
    const TextCharacters& m_text;
    std::vector<Fit> m_fits;
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

#include "formats/svg/draw/text/text_runs.h"

#include <algorithm>
#include <map>
#include <span>
#include <utility>

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
        std::map<Key, std::shared_ptr<const Outlines>> outlines;
        std::size_t bytes = 0;
    };
    Kept<ATextOutline> glyphs;
    Kept<ATextClusters> clusters;
    std::map<AFont, AFontMetrics> metrics;
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

GlyphCache& glyphCache(DrawContext& context) {
    return context.cache<GlyphCache>(CacheOf::texts);
}

class RunMaker {
public:
    RunMaker(DrawContext& context, const TextCharacters& text, bool vertical)
        : m_cache(glyphCache(context)), m_text(text), m_fits(text.characters.size()), m_vertical(vertical) {}

    std::vector<TextRun> run() {
        fitLengths();
        std::vector<TextRun> runs;
        makeRuns(0, m_text.characters.size(), runs);
        return runs;
    }

private:
    // What a text length asks of a character.
    struct Fit {
        double spacing = 0;
        double stretch = 1;
    };

    std::string_view textOf(std::size_t first, std::size_t last) const {
        const std::size_t begin = m_text.characters[first].begin;
        const std::size_t end = m_text.characters[last - 1].begin + m_text.characters[last - 1].size;
        return std::string_view(m_text.bytes).substr(begin, end - begin);
    }

    template <class Outlines, class Make>
    static std::shared_ptr<const Outlines> cached(GlyphCache::Kept<Outlines>& cache, std::string_view text,
                                                  const AFont& font, Make make) {
        if (text.size() > GlyphCache::kMostBytes) return std::make_shared<const Outlines>(make(text, font));
        GlyphCache::Key key{std::string(text), font};
        const auto found = cache.outlines.find(key);
        if (found != cache.outlines.end()) return found->second;
        if (cache.outlines.size() >= GlyphCache::kMostGlyphs ||
            cache.bytes + text.size() > GlyphCache::kMostBytes) {
            cache.outlines.clear();
            cache.bytes = 0;
        }
        auto made = std::make_shared<const Outlines>(make(text, font));
        cache.outlines.emplace(std::move(key), made);
        cache.bytes += text.size();
        return made;
    }

    std::shared_ptr<const ATextOutline> outline(std::size_t first, std::size_t last) {
        const AFont font = fontOf(m_text.spans[m_text.characters[first].span].style);
        return cached(m_cache.glyphs, textOf(first, last), font, outlineText);
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

    TextRun makeRun(std::size_t first, std::size_t last, std::shared_ptr<const ATextOutline> glyphs) const {
        const TextCharacter& one = m_text.characters[first];
        const Style& style = m_text.spans[one.span].style;
        TextRun run;
        run.first = first;
        run.last = last;
        run.natural = glyphs->advance;
        run.glyphs = std::move(glyphs);
        run.spacing = m_fits[first].spacing;
        run.stretch = m_fits[first].stretch;
        run.lengthSpacing = m_fits[last - 1].spacing;
        run.x = one.x;
        run.y = one.y;
        run.dx = one.dx;
        run.dy = one.dy;
        run.rotate = one.rotate;
        run.upright = m_vertical && isUpright(one.code);
        if (!joins(one.code)) run.spacing += style.letterSpacing;
        if (m_text.characters[last - 1].code == ' ') run.spacing += style.wordSpacing;
        if (run.upright) {
            // Stands in the middle of its line; its advance is its height.
            run.shift = -run.natural / 2;
            run.natural = style.fontSize;
        }
        return run;
    }

    void makeRuns(std::size_t first, std::size_t end, std::vector<TextRun>& runs) {
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
    void makeLooseRuns(std::size_t first, std::size_t last, std::vector<TextRun>& runs) {
        const AFont font = fontOf(m_text.spans[m_text.characters[first].span].style);
        const std::shared_ptr<const ATextClusters> clusters =
            cached(m_cache.clusters, textOf(first, last), font, outlineClusters);
        const std::size_t start = m_text.characters[first].begin;
        const std::size_t before = runs.size();
        std::size_t at = first;
        for (const ATextCluster& cluster : clusters->list) {
            const std::size_t begin = at;
            while (at < last && m_text.characters[at].begin - start < cluster.end) ++at;
            // Marks stay with their letter, wherever the drawing puts them.
            if (at > begin) runs.push_back(makeRun(begin, at, {clusters, &cluster.outline}));
        }
        if (clusters->rightToLeft) turnRound(runs, before);
    }

    // Letters that run to the left stand in the opposite order, up to the next that the drawing places.
    static void turnRound(std::vector<TextRun>& runs, std::size_t first) {
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
            std::vector<TextRun> runs;
            makeRuns(span.first, span.last, runs);
            double natural = 0;
            for (const TextRun& run : runs) natural += run.advance();
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

    GlyphCache& m_cache;
    const TextCharacters& m_text;
    std::vector<Fit> m_fits;
    bool m_vertical;
};

}  // namespace

std::vector<TextRun> makeTextRuns(DrawContext& context, const TextCharacters& text, bool vertical) {
    return RunMaker(context, text, vertical).run();
}

const AFontMetrics& fontMetricsOf(DrawContext& context, const Style& style) {
    auto& metrics = glyphCache(context).metrics;
    if (metrics.size() >= GlyphCache::kMostGlyphs) metrics.clear();
    AFont font = fontOf(style);
    const auto found = metrics.find(font);
    if (found != metrics.end()) return found->second;
    const AFontMetrics made = fontMetrics(font);
    return metrics.emplace(std::move(font), made).first->second;
}

}  // namespace svg

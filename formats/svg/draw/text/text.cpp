// Three steps: the characters with their styles and positions (text_characters.h), runs of glyphs, and the
// places of the runs. What stands in one run is shaped by the text library as a whole, so runs end only where
// the drawing itself moves a character.
#include "formats/svg/draw/text/text.h"

#include <algorithm>
#include <map>
#include <optional>
#include <tuple>

#include "canvas/text_outline.h"
#include "formats/svg/draw/text/text_characters.h"
#include "formats/svg/draw/text/text_path.h"
#include "formats/svg/values/text_scan.h"
#include "formats/svg/values/units.h"

namespace svg {

namespace {

// Of the font size.
constexpr double kDecorationWidth = 0.06;
// Below this a text length is only another program's measuring of the same glyphs.
constexpr double kSlightStretch = 0.02;
// Letters pushed closer than this would lie upon each other; narrower ones can still be read.
constexpr double kTightest = 0.9;

// Letters of texts that place every one of them, and labels that many texts share.
struct GlyphCache : DrawCache {
    using Key = std::tuple<std::string, std::string, double, int, bool>;
    static constexpr std::size_t kMostGlyphs = 4096;
    static constexpr std::size_t kLongestLabel = 32;
    std::map<Key, ATextOutline> glyphs;
};

struct Run {
    std::size_t first = 0, last = 0;  // characters
    ATextOutline glyphs;
    double spacing = 0;  // behind it
    double stretch = 1;  // of its width

    double width() const { return glyphs.advance * stretch; }
    double advance() const { return width() + spacing; }
};

// "'DejaVu Sans', serif" without the quotation marks.
std::string familyOf(std::string_view written) {
    std::string family;
    for (const char c : written) {
        if (c != '\'' && c != '"') family.push_back(c);
    }
    return family;
}

// How far below the point of the text its base line lies.
double baselineOffset(const Style& style) {
    switch (style.own.alignment.value_or(style.baseline)) {
        case Baseline::alphabetic:
            return 0;
        case Baseline::middle:
            return 0.26 * style.fontSize;
        case Baseline::central:
            return (kAscent - kDescent) / 2 * style.fontSize;
        case Baseline::mathematical:
            return kAscent / 2 * style.fontSize;
        case Baseline::hanging:
            return 0.75 * style.fontSize;
        case Baseline::textBefore:
            return kAscent * style.fontSize;
        case Baseline::textAfter:
        case Baseline::ideographic:
            return -kDescent * style.fontSize;
    }
    return 0;
}

class Layout {
public:
    Layout(DrawContext& context, const UserSpace& space, const TextCharacters& text)
        : m_context(context), m_space(space), m_text(text), m_fits(text.characters.size()) {}

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

    ATextOutline outline(std::size_t first, std::size_t last) {
        const Style& style = m_text.spans[m_text.characters[first].span].style;
        const std::size_t begin = m_text.characters[first].begin;
        const std::size_t end = m_text.characters[last - 1].begin + m_text.characters[last - 1].size;
        const std::string_view text = std::string_view(m_text.bytes).substr(begin, end - begin);
        const AFont font{familyOf(style.fontFamily), style.fontSize, style.fontWeight, style.italic};
        if (text.size() > GlyphCache::kLongestLabel) return outlineText(text, font);
        auto& glyphs = m_context.cache<GlyphCache>(CacheOf::texts).glyphs;
        GlyphCache::Key key{std::string(text), font.family, font.size, font.weight, font.italic};
        const auto found = glyphs.find(key);
        if (found != glyphs.end()) return found->second;
        if (glyphs.size() >= GlyphCache::kMostGlyphs) glyphs.clear();
        return glyphs.emplace(std::move(key), outlineText(text, font)).first->second;
    }

    // Whether the drawing says where a character goes.
    static bool isPlaced(const TextCharacter& one) {
        return !std::isnan(one.x) || !std::isnan(one.y) || one.dx != 0 || one.dy != 0;
    }

    std::size_t runEnd(std::size_t first, std::size_t end) const {
        const std::vector<TextCharacter>& all = m_text.characters;
        const TextSpan& span = m_text.spans[all[first].span];
        std::size_t at = clusterEnd(all, first, end);
        if (span.textPath || span.style.letterSpacing != 0 || m_fits[first].spacing != 0) return at;
        while (at < end && all[at].span == all[first].span && !isPlaced(all[at]) && all[at].rotate == 0 &&
               all[first].rotate == 0 && m_fits[at].spacing == 0) {
            if (span.style.wordSpacing != 0 && all[at - 1].code == ' ') break;
            at = clusterEnd(all, at, end);
        }
        return at;
    }

    void makeRuns(std::size_t first, std::size_t end, std::vector<Run>& runs) {
        while (first < end) {
            const std::size_t last = runEnd(first, end);
            const Style& style = m_text.spans[m_text.characters[first].span].style;
            Run run{first, last, outline(first, last), style.letterSpacing + m_fits[first].spacing,
                    m_fits[first].stretch};
            if (m_text.characters[last - 1].code == ' ') run.spacing += style.wordSpacing;
            runs.push_back(std::move(run));
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
            const TextCharacter& one = m_text.characters[runs[at].first];
            const bool jumps = !std::isnan(one.x) || !std::isnan(one.y);
            if (spanOf(runs[at]).textPath != path || (jumps && !path)) break;
        }
        return at;
    }

    double anchorShift(const std::vector<Run>& runs, std::size_t first, std::size_t last) const {
        const TextAnchor anchor = spanOf(runs[first]).style.textAnchor;
        if (anchor == TextAnchor::start) return 0;
        double length = 0;
        for (std::size_t i = first; i < last; ++i)
            length += runs[i].advance() + m_text.characters[runs[i].first].dx;
        return anchor == TextAnchor::middle ? -length / 2 : -length;
    }

    void placeOnLine(const std::vector<Run>& runs, std::size_t first, std::size_t last) {
        const TextCharacter& start = m_text.characters[runs[first].first];
        if (!std::isnan(start.x)) m_at.x = start.x;
        if (!std::isnan(start.y)) m_at.y = start.y;
        m_at.x += anchorShift(runs, first, last);
        for (std::size_t i = first; i < last; ++i) {
            const Run& run = runs[i];
            const TextCharacter& one = m_text.characters[run.first];
            m_at.x += one.dx;
            m_at.y += one.dy;
            AAffine placed = AAffine::translation(m_at.x, m_at.y);
            if (one.rotate != 0) {
                const double angle = std::fmod(one.rotate, 360) * 3.14159265358979323846 / 180;
                placed = placed *
                         AAffine{std::cos(angle), std::sin(angle), -std::sin(angle), std::cos(angle), 0, 0};
            }
            addRun(run, placed);
            m_at.x += run.advance();
        }
    }

    void placeOnPath(const std::vector<Run>& runs, std::size_t first, std::size_t last) {
        const TextSpan& span = spanOf(runs[first]);
        const TextPath path(m_context, span.textPath, m_space, span.style.fontSize);
        double along = path.start() + anchorShift(runs, first, last);
        double above = 0;
        for (std::size_t i = first; i < last; ++i) {
            const Run& run = runs[i];
            const TextCharacter& one = m_text.characters[run.first];
            along += one.dx;
            above += one.dy;
            const double half = run.width() / 2;
            if (const std::optional<AAffine> placed = path.place(along + half))
                addRun(run, *placed * AAffine::translation(-half, above));
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
        const auto addLine = [&](APath& lines, double middle) {
            const double half = kDecorationWidth * size / 2;
            lines.append(APath::rectangle({0, middle * size - half, length, middle * size + half}), toText);
        };
        if (span.decoration.underline) addLine(m_under, 0.12);
        if (span.decoration.overline) addLine(m_under, -kAscent);
        if (span.decoration.lineThrough) addLine(m_over, -0.28);
    }

    // Lines are pieces of their own: in one outline they could cut holes into the letters.
    void finishPiece() {
        if (!m_open) return;
        m_open->box = m_bounds.get();
        for (APath* part : {&m_under, &m_open->outline, &m_over}) {
            const bool isLine = part != &m_open->outline;
            if (!isLine || !part->empty()) m_pieces.push_back({std::move(*part), m_open->box, m_open->style});
            part->clear();
        }
        m_bounds = BoundsBuilder();
        m_open.reset();
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
    APath m_under, m_over;
};

}  // namespace

void layOutText(DrawContext& context, const DrawnElement& text, std::vector<TextPiece>& pieces) {
    pieces.clear();
    if (!text.style.displayed) return;
    const TextCharacters characters = collectCharacters(context, text);
    // What is repeated may be long: sixteen letters count as an element.
    if (characters.characters.empty() || !context.spend(characters.characters.size() / 16)) return;
    Layout(context, text.space, characters).run(pieces);
}

}  // namespace svg

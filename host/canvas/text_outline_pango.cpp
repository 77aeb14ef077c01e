// Pango's objects live as long as the process and are for one thread at a time, so the others wait.
#include <cairo.h>
#include <hb-ot.h>
#include <pango/pangocairo.h>

#include <algorithm>
#include <cmath>
#include <map>
#include <memory>
#include <mutex>
#include <utility>

#include "canvas/library_call.h"
#include "canvas/text_outline.h"

namespace {

// Texts are laid out in this size and scaled down: one size serves every drawing, and the 8 binary places of
// cairo's coordinates become as many more as a drawing can be enlarged.
constexpr double kLayoutSize = 256;
// Longer texts are laid out smaller, so that they stay within cairo's 2^23.
constexpr std::size_t kLongText = 8192;
// Of all fonts, until all are forgotten.
constexpr std::size_t kMostLetters = 8192;
// Nobody reads further than this; pango counts in 32 bits.
constexpr std::size_t kLongestText = std::size_t{1} << 20;

struct Release {
    void operator()(cairo_t* cairo) const { cairo_destroy(cairo); }
    void operator()(cairo_surface_t* surface) const { cairo_surface_destroy(surface); }
    void operator()(cairo_path_t* path) const { cairo_path_destroy(path); }
    void operator()(cairo_font_options_t* options) const { cairo_font_options_destroy(options); }
    void operator()(PangoFontDescription* font) const { pango_font_description_free(font); }
    void operator()(PangoContext* context) const { g_object_unref(context); }
    void operator()(PangoFontMap* map) const { g_object_unref(map); }
    void operator()(PangoLayout* layout) const { g_object_unref(layout); }
    void operator()(PangoFont* font) const { g_object_unref(font); }
    void operator()(PangoFontMetrics* metrics) const { pango_font_metrics_unref(metrics); }
    void operator()(PangoGlyphString* glyphs) const { pango_glyph_string_free(glyphs); }
};
template <class T>
using Held = std::unique_ptr<T, Release>;

class Layouter {
public:
    Layouter()
        : m_fonts(pango_cairo_font_map_new()),
          m_context(pango_font_map_create_context(m_fonts.get())),
          // Without bounds: cairo leaves out the glyphs that lie beside a surface.
          m_surface(cairo_recording_surface_create(CAIRO_CONTENT_ALPHA, nullptr)),
          m_cairo(cairo_create(m_surface.get())) {
        const Held<cairo_font_options_t> options(cairo_font_options_create());
        cairo_font_options_set_hint_style(options.get(), CAIRO_HINT_STYLE_NONE);
        cairo_font_options_set_hint_metrics(options.get(), CAIRO_HINT_METRICS_OFF);
        pango_cairo_context_set_font_options(m_context.get(), options.get());
        pango_context_set_round_glyph_positions(m_context.get(), FALSE);
        m_layout.reset(pango_layout_new(m_context.get()));
        pango_layout_set_single_paragraph_mode(m_layout.get(), TRUE);
    }

    PangoLayout* layout() { return m_layout.get(); }
    PangoContext* context() { return m_context.get(); }
    PangoFontMap* fonts() { return m_fonts.get(); }

    // Lays out a text, with its own direction where it has one.
    PangoLayoutLine* layOut(const std::string& line, const PangoFontDescription& font, bool rightToLeft) {
        pango_context_set_base_dir(m_context.get(), rightToLeft ? PANGO_DIRECTION_RTL : PANGO_DIRECTION_LTR);
        pango_layout_set_auto_dir(m_layout.get(), FALSE);
        pango_layout_context_changed(m_layout.get());
        pango_layout_set_font_description(m_layout.get(), &font);
        pango_layout_set_text(m_layout.get(), line.data(), static_cast<int>(line.size()));
        return pango_layout_get_line_readonly(m_layout.get(), 0);
    }

    // Of a glyph at 0, 0; null where it shows nothing.
    std::shared_ptr<const ALetterOutline> letter(PangoFont* font, PangoGlyph glyph) {
        const auto found = m_letters.find({font, glyph});
        if (found != m_letters.end()) return found->second;
        if (m_letters.size() >= kMostLetters) forgetLetters();
        APath path = outline(font, glyph);
        ALibraryCall::check();  // what lacks something is not kept
        auto letter = path.empty() ? nullptr : std::make_shared<const ALetterOutline>(std::move(path));
        // A font that is gone could leave its address to another.
        if (m_letters.lower_bound({font, 0}) == m_letters.upper_bound({font, ~PangoGlyph{0}}))
            m_lettersOf.emplace_back(static_cast<PangoFont*>(g_object_ref(font)));
        m_letters.emplace(std::pair(font, glyph), letter);
        return letter;
    }

private:
    APath outline(PangoFont* font, PangoGlyph glyph);
    void forgetLetters() {
        m_letters.clear();
        m_lettersOf.clear();
    }

    std::map<std::pair<PangoFont*, PangoGlyph>, std::shared_ptr<const ALetterOutline>> m_letters;
    std::vector<Held<PangoFont>> m_lettersOf;
    Held<PangoFontMap> m_fonts;
    Held<PangoContext> m_context;
    Held<PangoLayout> m_layout;
    Held<cairo_surface_t> m_surface;
    Held<cairo_t> m_cairo;
};

Layouter& layouter() {
    // Never given back: pango and cairo may keep fonts beyond the end, and fontconfig aborts when it is told
    // to go before them.
    static Layouter& shared = *new Layouter;
    return shared;
}

PangoStretch stretchOf(int percent) {
    constexpr std::pair<int, PangoStretch> kStretches[] = {
        {56, PANGO_STRETCH_ULTRA_CONDENSED}, {68, PANGO_STRETCH_EXTRA_CONDENSED},
        {81, PANGO_STRETCH_CONDENSED},       {93, PANGO_STRETCH_SEMI_CONDENSED},
        {106, PANGO_STRETCH_NORMAL},         {118, PANGO_STRETCH_SEMI_EXPANDED},
        {137, PANGO_STRETCH_EXPANDED},       {175, PANGO_STRETCH_EXTRA_EXPANDED},
    };
    for (const auto& [below, stretch] : kStretches) {
        if (percent < below) return stretch;
    }
    return PANGO_STRETCH_ULTRA_EXPANDED;
}

Held<PangoFontDescription> describe(const AFont& font, double size) {
    Held<PangoFontDescription> description(pango_font_description_new());
    const bool named =
        !font.family.empty() &&
        g_utf8_validate(font.family.data(), static_cast<gssize>(font.family.size()), nullptr) != FALSE;
    pango_font_description_set_family(description.get(), named ? font.family.c_str() : "sans-serif");
    pango_font_description_set_absolute_size(description.get(), size * PANGO_SCALE);
    pango_font_description_set_weight(description.get(),
                                      static_cast<PangoWeight>(std::clamp(font.weight, 100, 1000)));
    pango_font_description_set_style(description.get(),
                                     font.italic ? PANGO_STYLE_ITALIC : PANGO_STYLE_NORMAL);
    if (font.smallCaps) pango_font_description_set_variant(description.get(), PANGO_VARIANT_SMALL_CAPS);
    if (font.stretch != 100) pango_font_description_set_stretch(description.get(), stretchOf(font.stretch));
    return description;
}

// One line: whatever ends lines or is invisible is a space.
std::string oneLine(std::string_view text) {
    std::string line(text);
    std::replace_if(
        line.begin(), line.end(), [](char c) { return static_cast<unsigned char>(c) < ' '; }, ' ');
    return line;
}

APath pathOf(const cairo_path_t& outline) {
    APath path;
    // Kept until something is drawn from there.
    const cairo_path_data_t* start = nullptr;
    for (int i = 0; i < outline.num_data; i += outline.data[i].header.length) {
        const cairo_path_data_t* data = &outline.data[i];
        const auto point = [&](int index) { return AFPoint{data[index].point.x, data[index].point.y}; };
        if (data->header.type == CAIRO_PATH_MOVE_TO) {
            start = data;
            continue;
        }
        if (data->header.type == CAIRO_PATH_CLOSE_PATH) {
            if (!start) path.close();
            continue;
        }
        if (start) path.moveTo({start[1].point.x, start[1].point.y});
        start = nullptr;
        if (data->header.type == CAIRO_PATH_LINE_TO) {
            path.lineTo(point(1));
        } else {
            path.curveTo(point(1), point(2), point(3));
        }
    }
    return path;
}

// Memory that runs out leaves nothing.
APath Layouter::outline(PangoFont* font, PangoGlyph glyph) {
    const Held<PangoGlyphString> glyphs(pango_glyph_string_new());
    pango_glyph_string_set_size(glyphs.get(), 1);
    glyphs->glyphs[0] = {};
    glyphs->glyphs[0].glyph = glyph;
    cairo_t* cairo = m_cairo.get();
    cairo_new_path(cairo);
    cairo_move_to(cairo, 0, 0);
    pango_cairo_glyph_string_path(cairo, font, glyphs.get());
    const Held<cairo_path_t> path(cairo_copy_path(cairo));
    cairo_new_path(cairo);
    return path->status == CAIRO_STATUS_SUCCESS ? pathOf(*path) : APath();
}

std::mutex& layoutMutex() {
    static std::mutex mutex;
    return mutex;
}

bool canBeLaidOut(std::string_view text, const AFont& font) {
    return !text.empty() && text.size() <= kLongestText && font.size > 0 && std::isfinite(font.size) &&
           g_utf8_validate(text.data(), static_cast<gssize>(text.size()), nullptr) != FALSE;
}

double layoutSize(const std::string& line) {
    return kLayoutSize * static_cast<double>(kLongText) /
           static_cast<double>(std::max(line.size(), kLongText));
}

// As cairo places glyphs, in its 8 binary places.
double placed(int units) {
    constexpr double kPlaces = 256;
    return std::nearbyint(static_cast<double>(units) / PANGO_SCALE * kPlaces) / kPlaces;
}

// Appends glyphs of a run, from `x` on, in pango's units; gives back where they end.
int addGlyphs(Layouter& shared, const PangoGlyphItem& run, int first, int last, int x, ATextOutline& text) {
    for (int i = first; i < last; ++i) {
        const PangoGlyphInfo& one = run.glyphs->glyphs[i];
        if (one.glyph != PANGO_GLYPH_EMPTY) {
            if (auto outline = shared.letter(run.item->analysis.font, one.glyph)) {
                text.letters.push_back(
                    {std::move(outline), {placed(x + one.geometry.x_offset), placed(one.geometry.y_offset)}});
            }
        }
        x += one.geometry.width;
    }
    return x;
}

// The glyphs of one cluster; of text that runs to the left, the last glyph stands first.
ATextCluster clusterOf(Layouter& shared, const PangoGlyphItemIter& at, double scale) {
    const bool forward = at.start_glyph < at.end_glyph;
    const int first = forward ? at.start_glyph : at.end_glyph + 1;
    const int last = forward ? at.end_glyph : at.start_glyph + 1;
    ATextCluster cluster{
        static_cast<std::size_t>(at.start_index), static_cast<std::size_t>(at.end_index), {}};
    const int width = addGlyphs(shared, *at.glyph_item, first, last, 0, cluster.outline);
    cluster.outline.scale = scale;
    cluster.outline.advance = width * scale / PANGO_SCALE;
    return cluster;
}

}  // namespace

ATextClusters outlineClusters(std::string_view text, const AFont& font) {
    const std::string line = oneLine(text);
    if (!canBeLaidOut(line, font)) return {};
    const double size = layoutSize(line);
    const std::lock_guard lock(layoutMutex());
    const ALibraryCall call;
    Layouter& shared = layouter();
    const Held<PangoFontDescription> description = describe(font, size);
    PangoLayoutLine* const laidOut = shared.layOut(line, *description, font.rightToLeft);
    ATextClusters clusters;
    clusters.rightToLeft = laidOut->runs != nullptr;
    for (const GSList* run = laidOut->runs; run; run = run->next) {
        auto* const item = static_cast<PangoGlyphItem*>(run->data);
        clusters.rightToLeft = clusters.rightToLeft && item->item->analysis.level % 2 != 0;
        PangoGlyphItemIter at{};
        for (gboolean more = pango_glyph_item_iter_init_start(&at, item, line.c_str()); more;
             more = pango_glyph_item_iter_next_cluster(&at)) {
            clusters.list.push_back(clusterOf(shared, at, font.size / size));
        }
    }
    ALibraryCall::check();
    std::sort(clusters.list.begin(), clusters.list.end(),
              [](const ATextCluster& a, const ATextCluster& b) { return a.begin < b.begin; });
    return clusters;
}

AFontMetrics fontMetrics(const AFont& font) {
    const std::lock_guard lock(layoutMutex());
    const ALibraryCall call;
    Layouter& shared = layouter();
    const Held<PangoFontDescription> description = describe(font, kLayoutSize);
    const Held<PangoFontMetrics> of(pango_context_get_metrics(shared.context(), description.get(), nullptr));
    const double scale = font.size / kLayoutSize / PANGO_SCALE;
    AFontMetrics metrics;
    metrics.ascent = pango_font_metrics_get_ascent(of.get()) * scale;
    metrics.descent = pango_font_metrics_get_descent(of.get()) * scale;
    metrics.underlineThickness = pango_font_metrics_get_underline_thickness(of.get()) * scale;
    metrics.lineThroughThickness = pango_font_metrics_get_strikethrough_thickness(of.get()) * scale;
    // The library tells the upper edges.
    metrics.underline =
        pango_font_metrics_get_underline_position(of.get()) * scale - metrics.underlineThickness / 2;
    metrics.lineThrough =
        pango_font_metrics_get_strikethrough_position(of.get()) * scale - metrics.lineThroughThickness / 2;
    metrics.xHeight = font.size / 2;
    metrics.subscript = font.size / 5;
    metrics.superscript = font.size / 3;
    const Held<PangoFont> loaded(
        pango_font_map_load_font(shared.fonts(), shared.context(), description.get()));
    hb_font_t* const table = loaded ? pango_font_get_hb_font(loaded.get()) : nullptr;
    ALibraryCall::check();
    if (!table) return metrics;
    int across = 0, down = 0;
    hb_font_get_scale(table, &across, &down);
    const auto read = [&](hb_ot_metrics_tag_t tag, double& value) {
        hb_position_t position = 0;
        if (down != 0 && hb_ot_metrics_get_position(table, tag, &position) && position > 0)
            value = position * font.size / down;
        ALibraryCall::check();
    };
    read(HB_OT_METRICS_TAG_X_HEIGHT, metrics.xHeight);
    read(HB_OT_METRICS_TAG_SUBSCRIPT_EM_Y_OFFSET, metrics.subscript);
    read(HB_OT_METRICS_TAG_SUPERSCRIPT_EM_Y_OFFSET, metrics.superscript);
    return metrics;
}

ATextOutline outlineText(std::string_view text, const AFont& font) {
    const std::string line = oneLine(text);
    if (!canBeLaidOut(line, font)) return {};
    const double size = layoutSize(line);
    const std::lock_guard lock(layoutMutex());
    const ALibraryCall call;
    Layouter& shared = layouter();
    const Held<PangoFontDescription> description = describe(font, size);
    PangoLayoutLine* const laidOut = shared.layOut(line, *description, font.rightToLeft);
    PangoRectangle extents{};
    pango_layout_line_get_extents(laidOut, nullptr, &extents);
    ATextOutline outline;
    outline.scale = font.size / size;
    outline.advance = extents.width * outline.scale / PANGO_SCALE;
    int x = 0;
    for (const GSList* run = laidOut->runs; run; run = run->next) {
        const auto& item = *static_cast<const PangoGlyphItem*>(run->data);
        x = addGlyphs(shared, item, 0, item.glyphs->num_glyphs, x, outline);
    }
    ALibraryCall::check();
    return outline;
}

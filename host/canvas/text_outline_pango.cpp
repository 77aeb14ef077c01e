// Pango's objects live as long as the process and are for one thread at a time, so the others wait.
#include <cairo.h>
#include <pango/pangocairo.h>

#include <algorithm>
#include <cmath>
#include <memory>
#include <mutex>

#include "canvas/text_outline.h"

namespace {

// Texts are laid out in this size and scaled down: one size serves every drawing, and the 8 binary places of
// cairo's coordinates become as many more as a drawing can be enlarged.
constexpr double kLayoutSize = 256;
// Longer texts are laid out smaller, so that they stay within cairo's 2^23.
constexpr std::size_t kLongText = 8192;
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

    Held<cairo_path_t> outline() {
        cairo_t* cairo = m_cairo.get();
        cairo_new_path(cairo);
        cairo_move_to(cairo, 0, 0);
        pango_cairo_layout_line_path(cairo, pango_layout_get_line_readonly(m_layout.get(), 0));
        Held<cairo_path_t> path(cairo_copy_path(cairo));
        cairo_new_path(cairo);
        return path;
    }

private:
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
    return description;
}

// One line: whatever ends lines or is invisible is a space.
std::string oneLine(std::string_view text) {
    std::string line(text);
    std::replace_if(
        line.begin(), line.end(), [](char c) { return static_cast<unsigned char>(c) < ' '; }, ' ');
    return line;
}

APath pathOf(const cairo_path_t& outline, double scale) {
    APath path;
    // Kept until something is drawn from there.
    const cairo_path_data_t* start = nullptr;
    for (int i = 0; i < outline.num_data; i += outline.data[i].header.length) {
        const cairo_path_data_t* data = &outline.data[i];
        const auto point = [&](int index) {
            return AFPoint{data[index].point.x * scale, data[index].point.y * scale};
        };
        if (data->header.type == CAIRO_PATH_MOVE_TO) {
            start = data;
            continue;
        }
        if (data->header.type == CAIRO_PATH_CLOSE_PATH) {
            if (!start) path.close();
            continue;
        }
        if (start) path.moveTo({start[1].point.x * scale, start[1].point.y * scale});
        start = nullptr;
        if (data->header.type == CAIRO_PATH_LINE_TO) {
            path.lineTo(point(1));
        } else {
            path.curveTo(point(1), point(2), point(3));
        }
    }
    return path;
}

}  // namespace

ATextOutline outlineText(std::string_view text, const AFont& font) {
    if (text.empty() || text.size() > kLongestText || !(font.size > 0) || !std::isfinite(font.size))
        return {};
    const std::string line = oneLine(text);
    const auto length = static_cast<int>(line.size());
    if (!g_utf8_validate(line.data(), length, nullptr)) return {};
    const double size =
        kLayoutSize * static_cast<double>(kLongText) / static_cast<double>(std::max(line.size(), kLongText));
    const double scale = font.size / size;

    static std::mutex mutex;
    const std::lock_guard lock(mutex);
    Layouter& shared = layouter();
    const Held<PangoFontDescription> description = describe(font, size);
    pango_layout_set_font_description(shared.layout(), description.get());
    pango_layout_set_text(shared.layout(), line.data(), length);
    PangoRectangle extents{};
    pango_layout_line_get_extents(pango_layout_get_line_readonly(shared.layout(), 0), nullptr, &extents);
    const Held<cairo_path_t> outline = shared.outline();
    if (outline->status != CAIRO_STATUS_SUCCESS) return {};
    return {pathOf(*outline, scale), extents.width * scale / PANGO_SCALE};
}

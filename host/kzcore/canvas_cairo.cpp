#include <cairo.h>

#include <memory>

#include "kzcore/canvas.h"

namespace {

struct Release {
    void operator()(cairo_t* cairo) const { cairo_destroy(cairo); }
    void operator()(cairo_surface_t* surface) const { cairo_surface_destroy(surface); }
};

// Flushed into the pixels when it is destroyed.
struct Canvas {
    explicit Canvas(const APixels& pixels)
        : surface(cairo_image_surface_create_for_data(static_cast<unsigned char*>(pixels.bits),
                                                      CAIRO_FORMAT_RGB24, pixels.width, pixels.height,
                                                      pixels.width * 4)),
          cairo(cairo_create(surface.get())) {}
    ~Canvas() { cairo_surface_flush(surface.get()); }
    Canvas(const Canvas&) = delete;
    Canvas& operator=(const Canvas&) = delete;

    std::unique_ptr<cairo_surface_t, Release> surface;
    std::unique_ptr<cairo_t, Release> cairo;
};

void trace(cairo_t* cairo, const APath& path) {
    const AFPoint* point = path.points().data();
    for (APath::EVerb verb : path.verbs()) {
        switch (verb) {
            case APath::EVerb::move:
                cairo_move_to(cairo, point->x, point->y);
                break;
            case APath::EVerb::line:
                cairo_line_to(cairo, point->x, point->y);
                break;
            case APath::EVerb::curve:
                cairo_curve_to(cairo, point[0].x, point[0].y, point[1].x, point[1].y, point[2].x, point[2].y);
                break;
            case APath::EVerb::close:
                cairo_close_path(cairo);
                break;
        }
        point += verb == APath::EVerb::curve ? 3 : verb == APath::EVerb::close ? 0 : 1;
    }
}

void paintWith(cairo_t* cairo, const AColor& color) {
    COLORREF value = color.getColorRef();
    cairo_set_source_rgba(cairo, GetRValue(value) / 255.0, GetGValue(value) / 255.0, GetBValue(value) / 255.0,
                          color.getOpacity());
}

}  // namespace

void fillPixels(const APixels& pixels, const APath& path, const AColor& color, EFillRule rule) {
    Canvas canvas(pixels);
    cairo_t* cairo = canvas.cairo.get();
    trace(cairo, path);
    paintWith(cairo, color);
    cairo_set_fill_rule(cairo,
                        rule == EFillRule::evenOdd ? CAIRO_FILL_RULE_EVEN_ODD : CAIRO_FILL_RULE_WINDING);
    cairo_fill(cairo);
}

void strokePixels(const APixels& pixels, const APath& path, const AColor& color, double width) {
    Canvas canvas(pixels);
    cairo_t* cairo = canvas.cairo.get();
    trace(cairo, path);
    paintWith(cairo, color);
    cairo_set_line_width(cairo, width);
    cairo_set_miter_limit(cairo, 4);
    cairo_stroke(cairo);
}

// Computed style: what the cascade and inheritance leave of the properties of an element.
//
// Texts are views into the drawing's text or its style sheet. Lengths are user units. Import reads only the
// properties that the document model knows; the others keep their first values then.
#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <string_view>

#include "canvas/canvas.h"
#include "formats/svg/style/paint.h"
#include "formats/svg/style/variables.h"

namespace svg {

enum class TextAnchor : std::uint8_t { start, middle, end };
enum class PaintPart : std::uint8_t { fill, stroke, markers };
enum class Baseline : std::uint8_t {
    alphabetic,
    middle,
    central,
    mathematical,
    hanging,
    textBefore,
    textAfter,
    ideographic
};

// Which box a transform-origin and percentages of a transform refer to.
enum class TransformBox : std::uint8_t { viewBox, fillBox, strokeBox };

struct TextDecoration {
    bool underline = false, overline = false, lineThrough = false;
};

struct InheritedStyle {
    Paint fill{.kind = PaintKind::rgb};
    Paint stroke;
    double fontSize = 16;
    std::uint32_t color = 0;
    TextAnchor textAnchor = TextAnchor::start;
    bool visible = true;
    bool displayed = true;  // neither the element nor one around it has display: none
    bool italic = false;
    // What only a picture needs.
    bool smoothImages = true;        // image-rendering
    bool linearFilters = true;       // color-interpolation-filters: linearRGB
    bool preserveSpace = false;      // white-space: pre (xml:space is the attribute's reader's)
    bool linearColors = false;       // color-interpolation: linearRGB
    bool smooth = true;              // shape-rendering: not crispEdges or optimizeSpeed
    bool smallCaps = false;          // font-variant: small-caps
    bool rightToLeft = false;        // direction: rtl
    bool vertical = false;           // writing-mode
    std::uint8_t fontStretch = 100;  // per cent
    Baseline baseline = Baseline::alphabetic;
    std::array<PaintPart, 3> paintOrder{PaintPart::fill, PaintPart::stroke, PaintPart::markers};
    EFillRule fillRule = EFillRule::nonZero;
    EFillRule clipRule = EFillRule::nonZero;
    ELineCap lineCap = ELineCap::butt;
    ELineJoin lineJoin = ELineJoin::miter;
    int fontWeight = 400;
    double fillOpacity = 1;
    double strokeOpacity = 1;
    double strokeWidth = 1;
    double miterLimit = 4;
    double dashOffset = 0;
    double letterSpacing = 0;
    double wordSpacing = 0;
    std::string_view dashArray;                          // as written; empty: none
    std::string_view markerStart, markerMid, markerEnd;  // "url(#id)" as written; empty: none
    std::string_view fontFamily;                         // as written; empty: the usual one
    const Variable* variables = nullptr;                 // in force; the resolver's
};

struct OwnStyle {
    std::string_view filter, mask, clipPath;  // as written; empty: none
    // As written; empty: none.
    std::string_view transform;        // of a style sheet, whose lengths have units
    std::string_view transformOrigin;  // also of attributes
    TransformBox transformBox = TransformBox::viewBox;
    // Attributes and single transforms that style sheets give, the last declared first; null: none. The resolver's, texts with a terminator.
    const Variable* geometry = nullptr;
    Paint stopColor{.kind = PaintKind::rgb};
    // What only a picture needs.
    Paint floodColor{.kind = PaintKind::rgb};
    Paint lightingColor{.kind = PaintKind::rgb, .rgb = 0xffffff};
    double opacity = 1;
    double stopOpacity = 1;
    double floodOpacity = 1;
    std::string_view baselineShift;     // as written
    Paint background;                   // background-color, which the root alone has
    std::optional<Baseline> alignment;  // alignment-baseline, where it is not "auto"
    TextDecoration decoration;
    bool alphaMask = false;         // mask-type: alpha
    bool showsOverflow = false;     // overflow: visible or auto
    bool keepsStrokeWidth = false;  // vector-effect: non-scaling-stroke
    bool isolated = false;          // isolation: isolate
    EBlend blend = EBlend::normal;  // mix-blend-mode
};

struct Style : InheritedStyle {
    OwnStyle own;
    bool hasOwn = false;  // `own` may say something

    // Becomes what an element without any declaration has inside one of the style `parent`.
    void inheritFrom(const Style& parent) {
        static_cast<InheritedStyle&>(*this) = parent;
        if (hasOwn) own = OwnStyle();
        hasOwn = false;
    }
};

// Whether something is to be done with the picture of an element as a whole.
inline bool hasEffects(const Style& style) {
    return style.own.opacity < 1 || !style.own.clipPath.empty() || !style.own.mask.empty() ||
           !style.own.filter.empty() || style.own.blend != EBlend::normal || style.own.isolated;
}

}  // namespace svg

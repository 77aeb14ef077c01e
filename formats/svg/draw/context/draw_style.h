// Computed style for drawing: the import's style and what only a picture needs.
//
//     DrawAttributes attributes;
//     attributes.read(node);
//     DrawStyle room;
//     const DrawStyle& style = resolver.compute(node, attributes, parent, view, room);
//
// Texts are views into the drawing's tree or its style sheet. Lengths are user units.
#pragma once

#include <array>
#include <string_view>

#include "canvas/canvas.h"
#include "formats/svg/draw/context/draw_attributes.h"
#include "formats/svg/style/style_resolver.h"
#include "formats/svg/tree/user_space.h"

namespace svg {

enum class PaintPart : std::uint8_t { fill, stroke, markers };
enum class Baseline : std::uint8_t {
    alphabetic,
    middle,
    central,
    hanging,
    textBefore,
    textAfter,
    ideographic
};

struct DrawStyle : Style {
    // Inherited.
    double fillOpacity = 1;
    double strokeOpacity = 1;
    double strokeWidth = 1;
    double miterLimit = 4;
    std::string_view dashArray;  // as written; empty: none
    double dashOffset = 0;
    EFillRule fillRule = EFillRule::nonZero;
    EFillRule clipRule = EFillRule::nonZero;
    ELineCap lineCap = ELineCap::butt;
    ELineJoin lineJoin = ELineJoin::miter;
    std::array<PaintPart, 3> paintOrder{PaintPart::fill, PaintPart::stroke, PaintPart::markers};
    std::string_view markerStart, markerMid, markerEnd;  // "url(#id)" as written; empty: none
    std::string_view fontFamily;                         // as written; empty: the usual one
    int fontWeight = 400;
    bool italic = false;
    double letterSpacing = 0;
    double wordSpacing = 0;
    bool smoothImages = true;                  // image-rendering
    bool linearFilters = true;                 // color-interpolation-filters: linearRGB
    bool preserveSpace = false;                // white-space: pre (xml:space is the attribute's reader's)
    Baseline baseline = Baseline::alphabetic;  // dominant-baseline

    // Of the element itself; Style has some more.
    struct Own {
        double opacity = 1;
        double stopOpacity = 1;
        double floodOpacity = 1;
        Paint floodColor{.kind = PaintKind::rgb};
        Paint lightingColor{.kind = PaintKind::rgb, .rgb = 0xffffff};
        std::string_view baselineShift;  // as written
        bool underline = false, overline = false, lineThrough = false;
        bool alphaMask = false;         // mask-type: alpha
        bool showsOverflow = false;     // overflow: visible or auto
        bool keepsStrokeWidth = false;  // vector-effect: non-scaling-stroke
        bool isolated = false;          // isolation: isolate
        EBlend blend = EBlend::normal;  // mix-blend-mode
    } own;
    bool hasOwn = false;  // `own` may say something

    bool isInheritedWhole() const { return !hasOwn && Style::isInheritedWhole(); }
    DrawStyle inherited() const;
};

class DrawStyleResolver {
public:
    DrawStyleResolver() : m_sheet(Vocabulary::drawing) {}

    StyleSheet& sheet() { return m_sheet; }

    // The computed style of an element inside one of the style `parent`: put into `room`, or the parent's own
    // when the element changes nothing. Percentages refer to the view in which the element stands.
    const DrawStyle& compute(pugi::xml_node element, const DrawAttributes& attributes,
                             const DrawStyle& parent, const View& view, DrawStyle& room);

private:
    StyleSheet m_sheet;
    std::vector<const Declaration*> m_fromSheet;  // scratch
};

// The lengths of a dash array, into a list that is cleared first; empty for a line without gaps.
void parseDashes(std::string_view text, const LengthContext& context, std::vector<double>& dashes);

}  // namespace svg

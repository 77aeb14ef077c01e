// Computed style: what the cascade and inheritance leave of the properties that the document model knows.
#pragma once

#include <cstdint>
#include <string_view>
#include <vector>

#include "formats/svg/style/paint.h"
#include "formats/svg/xml/attributes.h"

namespace svg {

enum class Property : std::uint8_t {
    // What import reads, each with an Attribute.
    fill,
    stroke,
    color,
    display,
    visibility,
    fontSize,
    textAnchor,
    filter,
    mask,
    clipPath,
    stopColor,
    // What only drawing reads (draw/draw_style.h).
    fillOpacity,
    strokeOpacity,
    fillRule,
    clipRule,
    strokeWidth,
    strokeLinecap,
    strokeLinejoin,
    strokeMiterlimit,
    strokeDasharray,
    strokeDashoffset,
    paintOrder,
    markerStart,
    markerMid,
    markerEnd,
    marker,  // all three
    font,    // size, family, weight and style
    fontFamily,
    fontWeight,
    fontStyle,
    letterSpacing,
    wordSpacing,
    whiteSpace,
    dominantBaseline,
    baselineShift,
    textDecoration,
    imageRendering,
    filterColors,  // color-interpolation-filters
    opacity,
    stopOpacity,
    floodColor,
    floodOpacity,
    lightingColor,
    maskType,
    overflow,
    vectorEffect,
    mixBlendMode,
    isolation,
    count,
    unknown = count,
};

// Which properties a reader of declarations knows.
enum class Vocabulary : std::uint8_t { import, drawing };

enum class TextAnchor : std::uint8_t { start, middle, end };

struct Style {
    // Inherited.
    Paint fill{.kind = PaintKind::rgb};
    Paint stroke;
    std::uint32_t color = 0;
    TextAnchor textAnchor = TextAnchor::start;
    bool visible = true;
    bool displayed = true;  // neither the element nor one around it has display: none
    double fontSize = 16;
    // Of the element itself.
    std::string_view filter, mask, clipPath;  // empty: none
    Paint stopColor{.kind = PaintKind::rgb};

    // What an element without any declaration has. The same style when isInheritedWhole().
    Style inherited() const;
    // Whether that is this very style: nothing is set of what is not inherited.
    bool isInheritedWhole() const {
        return filter.empty() && mask.empty() && clipPath.empty() && stopColor.kind == PaintKind::rgb &&
               stopColor.rgb == 0;
    }
};

Property findProperty(std::string_view name, Vocabulary vocabulary);
// The presentation attribute of a property that import reads.
constexpr Attribute presentationAttribute(Property property) {
    return static_cast<Attribute>(static_cast<int>(Attribute::fill) + static_cast<int>(property));
}

enum class GlobalWord : std::uint8_t { none, inherit, initial };
// "inherit", "initial", "unset" or "revert" for a property; none for every other value.
GlobalWord globalWord(std::string_view value, bool isInherited);
// The size in a "font" shorthand; empty when there is none.
std::string_view fontSizeOf(std::string_view font);

// Sets one property from its text, relative to the parent's style. An invalid value changes nothing.
void applyProperty(Style& style, const Style& parent, Property property, std::string_view value);

struct Declaration {
    Property property = Property::unknown;
    bool important = false;
    bool hasPaint = false;  // `paint` is what `value` says
    std::string_view value;
    Paint paint;
};
void applyDeclaration(Style& style, const Style& parent, const Declaration& declaration);
// Reads the paint of a declaration that will be applied many times, where that can be done in advance.
void prepare(Declaration& declaration);

// Takes the next known declaration of a style attribute or a rule's body; false at the end. Unknown ones are
// passed over; to import, the "font" shorthand counts as its font size.
bool takeDeclaration(std::string_view& text, Declaration& declaration, Vocabulary vocabulary);

// The cascade of one element: what the sheet says (StyleSheet::collect), then its style attribute; important
// ones last. Calls apply(const Declaration&) in that order.
template <class Apply>
void cascade(const std::vector<const Declaration*>& sheet, std::string_view own, Vocabulary vocabulary,
             Apply apply) {
    bool important = false;
    for (const Declaration* one : sheet) {
        important |= one->important;
        if (!one->important) apply(*one);
    }
    bool ownImportant = false;
    Declaration declaration;
    for (std::string_view text = own; takeDeclaration(text, declaration, vocabulary);) {
        ownImportant |= declaration.important;
        if (!declaration.important) apply(declaration);
    }
    if (important) {
        for (const Declaration* one : sheet) {
            if (one->important) apply(*one);
        }
    }
    if (ownImportant) {
        for (std::string_view text = own; takeDeclaration(text, declaration, vocabulary);) {
            if (declaration.important) apply(declaration);
        }
    }
}

}  // namespace svg

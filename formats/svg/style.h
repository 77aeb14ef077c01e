// Computed style: what the cascade and inheritance leave of the properties that the document model knows.
#pragma once

#include <cstdint>
#include <string_view>

#include "formats/svg/attributes.h"
#include "formats/svg/paint.h"

namespace svg {

enum class Property : std::uint8_t {
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
    count,
    unknown = count,
};

enum class TextAnchor : std::uint8_t { start, middle, end };

struct Style {
    // Inherited.
    Paint fill{PaintKind::rgb, PaintKind::none, 0, {}};
    Paint stroke;
    std::uint32_t color = 0;
    TextAnchor textAnchor = TextAnchor::start;
    bool visible = true;
    bool displayed = true;  // neither the element nor one around it has display: none
    double fontSize = 16;
    // Of the element itself.
    std::string_view filter, mask, clipPath;  // empty: none
    Paint stopColor{PaintKind::rgb, PaintKind::none, 0, {}};

    // What an element without any declaration has. The same style when isInheritedWhole().
    Style inherited() const;
    // Whether that is this very style: nothing is set of what is not inherited.
    bool isInheritedWhole() const {
        return filter.empty() && mask.empty() && clipPath.empty() && stopColor.kind == PaintKind::rgb &&
               stopColor.rgb == 0;
    }
};

Property findProperty(std::string_view name);
// The presentation attribute of a property.
constexpr Attribute presentationAttribute(Property property) {
    return static_cast<Attribute>(static_cast<int>(Attribute::fill) + static_cast<int>(property));
}

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
// passed over; the "font" shorthand counts as its font size.
bool takeDeclaration(std::string_view& text, Declaration& declaration);

}  // namespace svg

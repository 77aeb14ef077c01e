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

    // What an element without any declaration has.
    Style inherited() const;
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
    std::string_view value;
};

// Takes the next known declaration of a style attribute or a rule's body; false at the end. Unknown ones are
// passed over; the "font" shorthand counts as its font size.
bool takeDeclaration(std::string_view& text, Declaration& declaration);

}  // namespace svg

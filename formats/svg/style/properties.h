// The table of properties: the name of each, how its value is read, whether it inherits.
//
//     const Reading reading{parent, {width, height}};
//     applyProperty(style, reading, findProperty("stroke-width", Vocabulary::drawing), "2mm");
#pragma once

#include <cstdint>
#include <string_view>

#include "formats/svg/style/style.h"

namespace svg {

// The number of a row; presentation attributes of an element are a set of 64 bits.
using Property = std::uint8_t;
constexpr Property kUnknownProperty = 255;
// Attributes that a style sheet may give an element, "width: 24px": this and the number of the Attribute. Behind them
// the transforms beside "transform": "translate", "rotate", "scale".
constexpr Property kGeometry = 180;
constexpr Property kVariable = 254;  // "--name", a value that others may refer to

// Whether a property is no row of the table: geometry or a value with a name.
constexpr bool isBesideTable(Property property) {
    return property >= kGeometry;
}

// Which properties a reader asks for: those of the document model, or all.
enum class Vocabulary : std::uint8_t { model, drawing };

// What values are relative to.
struct Reading {
    const Style& parent;
    double viewportWidth = 0;
    double viewportHeight = 0;
};

Property findProperty(std::string_view name, Vocabulary vocabulary);
// The presentation attributes that a vocabulary takes, one bit for a property.
std::uint64_t propertiesOf(Vocabulary vocabulary);
// The number of an attribute without a prefix, by its terminated name: that of an Attribute, or kPropertySlot
// and a property; 0 for an unknown one.
std::uint8_t findSlot(const char* name);

// Sets one property from its text. False, with nothing changed, for an invalid value.
bool applyProperty(Style& style, const Reading& reading, Property property, std::string_view value);

// As if nothing had been declared: the inherited or the initial value.
void resetProperty(Style& style, const Reading& reading, Property property);

// The attribute's name.
const char* geometryName(Property property);
// What an attribute would say that means the same as a property of geometry. False for an invalid value.
bool readGeometry(Property property, std::string_view value, std::string_view& text);

// The member that a property with nothing but a paint sets; null for every other property.
using PaintMember = Paint InheritedStyle::*;
PaintMember paintMember(Property property);

}  // namespace svg

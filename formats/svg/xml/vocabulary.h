// The elements and attributes that the reader knows.
#pragma once

#include <cstdint>
#include <string_view>

#include "formats/svg/values/word_table.h"

namespace svg {

enum class Element : std::uint8_t {
    unknown,
    // Containers that become objects.
    svg,
    g,
    a,
    switch_,
    use,
    // Shapes.
    rect,
    circle,
    ellipse,
    polygon,
    path,
    line,
    polyline,
    text,
    image,
    // Parts of a text.
    tspan,
    textPath,
    // What objects refer to.
    symbol,
    linearGradient,
    radialGradient,
    meshGradient,
    pattern,
    hatch,
    stop,
    mask,
    clipPath,
    filter,
    marker,
    // Parts of a filter that tell a shadow.
    feDropShadow,
    feOffset,
    feMerge,
    feBlend,
    feComposite,
    style,
    count,
};

enum class Attribute : std::uint8_t {
    unknown,
    id,
    class_,
    style,
    transform,
    href,
    viewBox,
    preserveAspectRatio,
    systemLanguage,
    requiredExtensions,
    x,
    y,
    width,
    height,
    cx,
    cy,
    r,
    rx,
    ry,
    x1,
    y1,
    x2,
    y2,
    points,
    d,
    // Of other namespaces.
    label,
    groupMode,
    flatSided,
    drawingType,
    arcStart,
    arcEnd,
    insensitive,
    kzClass,
    kzDatabase,
    kzModel,
    count,
};

enum class Namespace : std::uint8_t { svg, xlink, inkscape, sodipodi, kz, none, other };

// Attributes without a prefix, but for presentation attributes (style/properties.h).
constexpr Word<Attribute> kPlainAttributes[] = {
    {"id", Attribute::id},
    {"class", Attribute::class_},
    {"style", Attribute::style},
    {"transform", Attribute::transform},
    {"href", Attribute::href},
    {"viewBox", Attribute::viewBox},
    {"preserveAspectRatio", Attribute::preserveAspectRatio},
    {"systemLanguage", Attribute::systemLanguage},
    {"requiredExtensions", Attribute::requiredExtensions},
    {"x", Attribute::x},
    {"y", Attribute::y},
    {"width", Attribute::width},
    {"height", Attribute::height},
    {"cx", Attribute::cx},
    {"cy", Attribute::cy},
    {"r", Attribute::r},
    {"rx", Attribute::rx},
    {"ry", Attribute::ry},
    {"x1", Attribute::x1},
    {"y1", Attribute::y1},
    {"x2", Attribute::x2},
    {"y2", Attribute::y2},
    {"points", Attribute::points},
    {"d", Attribute::d},
};

Element findElement(std::string_view localName);
// The kind of an element of this qualified name, whatever its prefix.
Element kindOfName(const char* qualifiedName);
// An attribute with a prefix.
Attribute findAttribute(Namespace space, std::string_view localName);
Namespace findNamespace(std::string_view uri);

}  // namespace svg

// The elements and attributes that the reader knows.
#pragma once

#include <cstdint>
#include <string_view>

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
    // Presentation attributes, in the order of Property.
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

Element findElement(std::string_view localName);
// The kind of an element of this qualified name, whatever its prefix.
Element kindOfName(const char* qualifiedName);
// An attribute without a prefix, by its terminated name.
Attribute findPlainAttribute(const char* name);
Attribute findAttribute(Namespace space, std::string_view localName);
Namespace findNamespace(std::string_view uri);

}  // namespace svg

// A gradient's stop from its element.
#pragma once

#include <pugixml.hpp>

#include "canvas/color.h"
#include "formats/svg/style/style.h"

namespace svg {

// So many of a gradient's stops count.
inline constexpr std::size_t kMostStops = 1024;

// What `stop-color` and `stop-opacity` say; transparent black for a color that is none.
AColor stopColor(const Style& style);

// `before`: the offset of the stop before, which no later one is below; 0 for the first.
AGradientStop gradientStop(pugi::xml_node stop, const Style& style, double before);

}  // namespace svg

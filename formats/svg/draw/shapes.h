// The outlines of shapes.
#pragma once

#include "formats/svg/tree/user_space.h"
#include "formats/svg/values/path_data.h"

namespace svg {

constexpr bool isShape(Element element) {
    return element >= Element::rect && element <= Element::polyline;
}

// Appends the outline of a shape in its own user space; nothing for one that is not drawn. `space`: what
// percentages refer to.
void appendShape(Element shape, const AttributeSet& attributes, const UserSpace& space, double fontSize,
                 APath& path, Arcs arcs = Arcs::exact);

}  // namespace svg

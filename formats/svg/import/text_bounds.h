// The box of a text, estimated without fonts: a character is 0.55 of the font size wide, a line reaches 0.8
// above and 0.2 below its base line. Text on a path has the path's box, grown by the height of the letters.
#pragma once

#include "formats/svg/style/style_resolver.h"
#include "formats/svg/tree/drawing_index.h"
#include "formats/svg/tree/user_space.h"

namespace svg {

// `attributes` and `style` are the text's own.
AFRect textBounds(pugi::xml_node text, const AttributeSet& attributes, const Style& style,
                  const UserSpace& outer, StyleResolver& styles, DrawingIndex& index);

// The text path inside a text, null when there is none.
pugi::xml_node findTextPath(pugi::xml_node text);

}  // namespace svg

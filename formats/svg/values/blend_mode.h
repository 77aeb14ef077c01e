// Blend modes as drawings name them.
#pragma once

#include <optional>
#include <string_view>

#include "canvas/pixel_blending.h"

namespace svg {

// "normal", "multiply", …; none for every other word.
std::optional<EBlend> blendModeOf(std::string_view word);

// Whether a drawing's text sets mix-blend-mode to anything but normal, wherever it says so: a quick look that
// tells which drawings need no groups to blend in. Many programs write "normal" with every element.
bool asksForBlending(std::string_view text);

}  // namespace svg

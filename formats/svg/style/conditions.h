// The conditions of @media and @supports.
#pragma once

#include <string_view>

namespace svg {

// Whether one of a list of media queries holds for a picture on a light screen of unknown size.
bool matchesMedia(std::string_view queries);

// Whether a condition of @supports holds: known properties, known selectors.
bool isSupported(std::string_view condition);

}  // namespace svg

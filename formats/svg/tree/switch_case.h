// Conditions on elements: languages and extensions; which child a "switch" shows.
#pragma once

#include <pugixml.hpp>

#include "formats/svg/style/attributes.h"

namespace svg {

// The first object without required extensions and for no language or English; null when there is none.
pugi::xml_node chosenCase(pugi::xml_node node);

// Whether an element is for English readers without extensions, wherever it stands.
bool isWanted(const AttributeSet& attributes);

}  // namespace svg

// Which child a "switch" shows.
#pragma once

#include <pugixml.hpp>

namespace svg {

// The first object without required extensions and for no language or English; null when there is none.
pugi::xml_node chosenCase(pugi::xml_node node);

}  // namespace svg

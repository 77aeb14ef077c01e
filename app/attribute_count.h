// How many objects stand behind the entries of Select by Attributes: the host's own count, in one pass over
// the document, which knows of the plug-in only how its entries are called.
//
// An object counts for its class, its fill, its stroke, its layer and the effects around it, unless a
// container of it counts, too: what is selected with its container is selected once.
#pragma once

#include <cstddef>
#include <string>
#include <unordered_map>

#include "kzcore/view/view.h"

namespace app {

// By page and path: "Fill/Solid/RGB Color/red". Entries that no object is behind are not there.
using AttributeCounts = std::unordered_map<std::string, std::size_t>;

AttributeCounts countAttributes(const ADocView& view);

}  // namespace app

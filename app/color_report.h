// The colours that a drawing is painted with, as a strip of them shows them.
#pragma once

#include <nlohmann/json.hpp>

#include "app/session.h"

namespace app {

// {"colors":[{"name":…,"class":…,"value":"#rrggbb","item":…,"objects":…,"visible":…}],
//  "brushes":[{"name":…,"class":…,"stops":[["#rrggbb",offset],…],"item":…,"objects":…,"visible":…}]}, in the order of
// their first use. `item` is what a colour tool is started on; `objects` how many are filled or drawn with it,
// master objects included; `stops` are those of gradients.
nlohmann::ordered_json reportColors(Session& session);

}  // namespace app

// What the plug-in's dialogs remember from one run to the next, as the program tells it.
#pragma once

#include <nlohmann/json.hpp>

namespace app {

// {"prefs":{"AViewFilterPrefs":{"width":…,"height":…,"left":…,"top":…}}}, in pixels, a width or height of -1
// being that of the dialog's template; null for a class of which nothing is stored. Raises Failure when what
// is stored cannot be read.
nlohmann::ordered_json reportPrefs();

}  // namespace app

// What the session is at, in a few numbers: for a user interface that asks after every line what it has to read anew.
#pragma once

#include <nlohmann/json.hpp>

#include "app/session.h"
#include "platform/driver/dialog.h"

namespace app {

// {"state":{"file":…,"drawing":…,"page":[x,y,w,h],"scale":…,"objects":…,"selected":…,"hidden":…,"selection":…,
// "shown":…,"filter":…,"undo":…,"redo":…,"dialog":…}}. `drawing` counts the drawings opened, `selection` the changes
// of the selection, `shown` those of the picture; `scale` is of the page, in pixels to a unit; `hidden` counts objects
// of which the filter shows nothing, `dialog` is the title of the dialog that waits. Without a drawing all of it but
// `drawing` is null.
nlohmann::ordered_json reportState(Session& session, const driver::Dialog* dialog);

}  // namespace app

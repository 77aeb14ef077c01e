// What an open dialog shows, as JSON.
#pragma once

#include "app/output.h"
#include "platform/driver/dialog.h"

namespace app {

// {"tree":[{"text":…,"check":…,"image":…,"expanded":…,"children":[…]}]}
nlohmann::ordered_json reportTree(const driver::Dialog& dialog);
// {"dialog":{"title":…,"rect":[x,y,w,h],"page":…,"pages":[…],"controls":[{"id":…,"text":…,"enabled":…,
// "checked":…,"rect":[…]}]}}. `page` is null in a dialog without pages, `checked` but for check boxes.
nlohmann::ordered_json reportDialog(const driver::Dialog& dialog);
// {"kinds":[…]} of these controls, in their order: button, check box, tree, tabs or other.
nlohmann::ordered_json reportKinds(const driver::Dialog& dialog);

}  // namespace app

// What of a drawing lies where, as a user can point at it: what the view shows and the user may select. Of closed
// containers it is the container. Lengths and places are user units.
#pragma once

#include <nlohmann/json.hpp>

#include "app/session.h"
#include "kzutil/rect.h"

namespace app {

// Whether a user may select the object: neither it nor what it lies in is locked, its layer is shown and open.
bool canBeSelected(const AObject& object);
// Everything that a user can point at, in drawing order.
std::vector<AObject*> selectableObjects(Session& session);

// {"at":[…]}, topmost first: whose picture is at most `tolerance` away.
nlohmann::ordered_json reportAt(Session& session, AFPoint point, double tolerance);
// {"inside":[…]}, in drawing order: whose extent lies within the area.
nlohmann::ordered_json reportInside(Session& session, const AFRect& area);
// {"touching":[…]}, in drawing order: of whose picture something lies within the area.
nlohmann::ordered_json reportTouching(Session& session, const AFRect& area);

// {"extents":{"all":[x,y,w,h],"boxes":[[x,y,w,h],…],"more":…}} of the selected objects: around all of them, null
// without a selection, and of each of the first ones; `more` tells how many further ones there are.
nlohmann::ordered_json reportExtents(Session& session);

}  // namespace app

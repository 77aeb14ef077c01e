// What the program tells of a drawing, as JSON. Scripts and every --json print the same values.
#pragma once

#include "app/output.h"
#include "app/session.h"

namespace app {

// Every object in drawing order, master layers first.
AObList allObjects(ADocument& document);

// {"selection":["a","b"]}, in the selection's order, behind the members of `head`. Printed as it is made: a selection may
// hold a million objects.
void printSelection(const ADocView& view, const nlohmann::ordered_json& head = {});
// {"objects":[{"id":…,"class":…,"layer":…,"parent":…,"fill":…,"stroke":…}]}, in drawing order, master layers
// first.
void printObjects(ADocument& document);
// {"tools":[{"class":…,"name":…,"description":…,"flags":…,"valid":…}]}, in the order of the export table.
nlohmann::ordered_json reportTools(const Session& session);
// {"messages":[…]} shown since the last call.
nlohmann::ordered_json reportMessages();
// [{"name":…,"class":…,"master":…,"locked":…,"hidden":…,"objects":…}]: the master layers, then the layers, each
// bottom first.
nlohmann::ordered_json reportLayers(ADocument& document);
// The page, the layers, how many colors, brushes that are not solid, and objects of each class there are.
nlohmann::ordered_json reportInfo(const std::string& file, ADocument& document);

// The last segment of the class's display structure, "Rectangle"; the class's own name when it has none.
std::string displayName(const AClassInfo& classInfo);
// The title of the layer that holds the object.
std::string layerTitle(const AObject& object);
// The name of the fill's colour or brush, of the stroke's colour or brush; null when there is none.
nlohmann::ordered_json fillName(const AObject& object);
nlohmann::ordered_json strokeName(const AObject& object);

}  // namespace app

// What a view's filter hides, as its view asks it: of every colour and brush that objects use.
#pragma once

#include <vector>

#include "app/output.h"
#include "kzcore/view/view.h"

namespace app {

struct ShownItem {
    const AReferItem* item;
    bool isVisible;
};
struct ShownItems {
    std::vector<ShownItem> colors;
    std::vector<ShownItem> brushes;  // that are not solid
};
// In the order of their first use in the document. Without a filter everything is visible.
ShownItems shownItems(const ADocView& view);

// {"filter":null} when the view has none, else {"filter":{"hidden":[…],"visible":[…],"brushes":{"hidden":[…],
// "visible":[…]}}}.
nlohmann::ordered_json reportFilter(const ADocView& view);

// {"visible":{"a":{"fill":true,"stroke":null},…}}: every object in drawing order, master layers first; null
// where it has no such paint. Printed as it is made: a document may hold a million objects.
void printVisible(const ADocView& view);

}  // namespace app

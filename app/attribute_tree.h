// The pages of the Select by Attributes sheet as its tool shows them for the open drawing.
#pragma once

#include <optional>

#include "app/session.h"
#include "platform/driver/description.h"

namespace app {

struct AttributeEntry {
    std::string text;
    std::optional<std::size_t> objects;  // how many it stands for when it is ticked alone; none: not known
    std::vector<AttributeEntry> entries;
};
struct AttributePage {
    std::string name;
    std::vector<AttributeEntry> entries;
};

// Opens the sheet, reads page by page, and cancels it. Raises Failure when the tool cannot start.
std::vector<AttributePage> readAttributes(Session& session);

}  // namespace app

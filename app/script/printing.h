// The script command "print": one line of JSON for each.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "app/row_report.h"
#include "app/session.h"

namespace app {

// One line for each thing that can be printed, with what it tells.
std::string printHelp();

// Prints what `words` name, "print" being the first of them. `dialog` is the open one, else null; `rows` is the
// session's own. Raises Failure.
void printWords(Session& session, driver::Dialog* dialog, RowReport& rows,
                const std::vector<std::string>& words);

}  // namespace app

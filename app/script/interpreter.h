// Runs scripts: a line is a command.
#pragma once

#include <iosfwd>
#include <string>

#include "app/session.h"

namespace app {

// Runs the lines of a script in a session. `name` is what errors call it. Raises Failure with "NAME:LINE:
// reason" at the first line that does not work; what was printed until then stays printed.
void interpret(Session& session, std::istream& script, const std::string& name);

// What a user needs to know to write one.
std::string scriptHelp();

}  // namespace app

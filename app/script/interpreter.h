// Runs scripts: a line is a command.
#pragma once

#include <iosfwd>
#include <string>

#include "app/script/line_source.h"
#include "app/session.h"

namespace app {

// Runs the lines of a script in a session. `name` is what errors call it. Raises Failure with "NAME:LINE:
// reason" at the first line that does not work; what was printed until then stays printed.
void interpret(Session& session, std::istream& script, const std::string& name);

// The same for lines that come from elsewhere. Raises Failure with the reason when a line does not work and the
// source does not go on after it. A dialog that is open at the end is cancelled.
void interpret(Session& session, LineSource& lines);

// What a user needs to know to write one.
std::string scriptHelp();

}  // namespace app

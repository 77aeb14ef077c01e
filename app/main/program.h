// The program as functions, so that tests can run it.
#pragma once

#include <string>
#include <vector>

namespace app {

// `arguments` without the program's name, UTF-8. Returns the exit status: 0 done, 1 nothing matched, 2 wrong
// usage or unreadable input, told in one line on standard error. Raises what failed() tells.
int run(std::vector<std::string> arguments);

// To be called while an exception is handled: tells it in one line on standard error, without asking for memory, and
// returns the exit status.
int failed() noexcept;

}  // namespace app

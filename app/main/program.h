// The program as a function, so that tests can run it.
#pragma once

#include <string>
#include <vector>

namespace app {

// `arguments` without the program's name, UTF-8. Returns the exit status: 0 done, 1 nothing matched, 2 wrong
// usage or unreadable input, told in one line on standard error.
int run(std::vector<std::string> arguments);

}  // namespace app

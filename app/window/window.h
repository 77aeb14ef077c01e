// The window in which people use the tools, on Windows.
#pragma once

#include <string>
#include <vector>

namespace app {

// Opens the window, with the drawing when a name is given, and returns when it is closed: the exit status. Raises
// Failure where there is none.
int runWindow(const std::string& file);

// Whether arguments that name no command are for the window: one drawing, or nothing at all from the desktop.
bool isForWindow(const std::vector<std::string>& arguments);

}  // namespace app

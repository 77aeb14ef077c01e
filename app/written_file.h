// Files that are there as a whole or not at all.
#pragma once

#include <string>
#include <string_view>

namespace app {

// Writes a file, through a temporary one beside it that then takes its name: whatever goes wrong, what was
// there before is there still. What is no ordinary file, a device for instance, is written to. Raises Failure
// with "NAME: reason".
void writeFile(const std::string& name, std::string_view bytes);

// The name's extension in lower case, ".png"; empty without one.
std::string extensionOf(const std::string& name);

}  // namespace app

// Files that the user asked for.
#pragma once

#include <string>
#include <string_view>

namespace app {

// Writes a file as a whole or not at all: see kzutil/whole_file.h. Raises Failure with "NAME: reason".
void writeFile(const std::string& name, std::string_view bytes);

// The name's extension in lower case, ".png"; empty without one.
std::string extensionOf(const std::string& name);

}  // namespace app

// Files that are there as a whole or not at all.
#pragma once

#include <filesystem>
#include <string>
#include <string_view>

namespace kzutil {

// Writes a file, through a temporary one beside it that then takes its name: whatever goes wrong, and even
// when the program is killed, what was there before is there still. A temporary file that a killed program
// left of it is removed. Several programs may write the same file: each result is the whole of one of them.
// What is no ordinary file, a device for instance, is written to.
//
// False when the file could not be written, with the reason: "there is no such folder".
bool writeWholeFile(std::filesystem::path path, std::string_view bytes, std::string& reason);

}  // namespace kzutil

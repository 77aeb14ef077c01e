// Files of modules.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "platform/headless/include/windows.h"

namespace headless {

// The absolute UTF-8 path that a module's name means: a name without a slash stands beside the program.
std::string module_file(LPCWSTR name);

struct ModuleFile {
    DWORD error = ERROR_SUCCESS;  // or ERROR_FILE_NOT_FOUND, ERROR_ACCESS_DENIED, ERROR_BAD_EXE_FORMAT (too
                                  // big to be one)
    std::vector<std::uint8_t> bytes;
};

// Reads at most the given number of bytes from the front of a regular file.
ModuleFile read_front(const std::string& path, std::size_t limit);

// Reads a whole file, of at most 256 MiB.
ModuleFile read_whole(const std::string& path);

}  // namespace headless

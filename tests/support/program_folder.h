// The folder of the running test program, where everything that was built stands as it is shipped.
#pragma once

#include <filesystem>
#include <string>

#include "kzutil/file_path.h"

namespace test {

inline std::filesystem::path programFolder() {
    const std::string text = AFilePath().getPath().toUtf8();
    return std::filesystem::path(std::u8string(text.begin(), text.end()));
}

}  // namespace test

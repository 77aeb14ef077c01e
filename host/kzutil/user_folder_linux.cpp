#include "kzutil/user_folder.h"

#include <cstdlib>

namespace kzutil {

// A relative path is invalid in either variable, and counts as none.
std::filesystem::path userConfigurationFolder() {
    const char* folder = std::getenv("XDG_CONFIG_HOME");
    if (folder && folder[0] == '/') return folder;
    const char* home = std::getenv("HOME");
    return home && home[0] == '/' ? std::filesystem::path(home) / ".config" : std::filesystem::path();
}

}  // namespace kzutil

// Where the user's own files lie.
#pragma once

#include <filesystem>

namespace kzutil {

// The folder in which programs keep what they remember for the user; it may not exist yet. Empty when the
// system tells of none. On Windows %APPDATA%, elsewhere $XDG_CONFIG_HOME or else ~/.config.
std::filesystem::path userConfigurationFolder();

}  // namespace kzutil

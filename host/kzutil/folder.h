// What a folder holds.
#pragma once

#include <filesystem>
#include <optional>
#include <vector>

namespace kzutil {

// The paths of all that is directly in a folder, in no order. None when it cannot be listed. Raises bad_alloc,
// where the library's directory_iterator ends the program.
std::optional<std::vector<std::filesystem::path>> entriesOf(const std::filesystem::path& folder);

}  // namespace kzutil

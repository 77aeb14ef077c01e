// What stands in a folder.
#pragma once

#include <filesystem>
#include <vector>

namespace kzutil {

// The names in the folder, in no order; none where it does not exist or may not be read. Raises bad_alloc.
std::vector<std::filesystem::path> folderNames(const std::filesystem::path& folder);

}  // namespace kzutil

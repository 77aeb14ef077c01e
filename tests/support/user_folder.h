// The user's configuration folder, as the system tells it to this process and to those that it starts.
#pragma once

#include <filesystem>

namespace test {

void setUserFolder(const std::filesystem::path& folder);

}  // namespace test

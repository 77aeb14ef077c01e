#include "tests/support/user_folder.h"

#include <cstdlib>

namespace test {

void setUserFolder(const std::filesystem::path& folder) {
    setenv("XDG_CONFIG_HOME", folder.c_str(), 1);
}

}  // namespace test

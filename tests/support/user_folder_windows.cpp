#include "tests/support/user_folder.h"

#include "platform/winapi.h"

namespace test {

void setUserFolder(const std::filesystem::path& folder) {
    SetEnvironmentVariableW(L"APPDATA", folder.c_str());
}

}  // namespace test

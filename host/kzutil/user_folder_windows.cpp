#include "kzutil/user_folder.h"
#include "kzutil/utf.h"

namespace kzutil {

std::filesystem::path userConfigurationFolder() {
    WideString folder;
    DWORD length = 0;  // with the end, while there is not enough room
    while ((length = GetEnvironmentVariableW(L"APPDATA", folder.data(), static_cast<DWORD>(folder.size()))) >
           folder.size())
        folder.resize(length);
    folder.resize(length);
    return folder;
}

}  // namespace kzutil

#include <new>
#include <system_error>

#include "kzutil/folder_names.h"

namespace kzutil {

std::vector<std::filesystem::path> folderNames(const std::filesystem::path& folder) {
    std::vector<std::filesystem::path> names;
    try {
        for (const std::filesystem::directory_entry& entry : std::filesystem::directory_iterator(folder))
            names.push_back(entry.path().filename());
    } catch (const std::filesystem::filesystem_error& error) {
        if (error.code() == std::errc::not_enough_memory) throw std::bad_alloc();
    }
    return names;
}

}  // namespace kzutil

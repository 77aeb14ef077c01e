// Not with directory_iterator: the standard library here ends the process when it has no memory for one.
#include <dirent.h>

#include <cerrno>
#include <memory>
#include <new>

#include "kzutil/folder_names.h"

namespace kzutil {

namespace {

struct CloseFolder {
    void operator()(DIR* folder) const { closedir(folder); }
};

}  // namespace

std::vector<std::filesystem::path> folderNames(const std::filesystem::path& folder) {
    std::vector<std::filesystem::path> names;
    const std::unique_ptr<DIR, CloseFolder> open(opendir(folder.c_str()));
    if (!open && errno == ENOMEM) throw std::bad_alloc();
    while (const dirent* entry = open ? readdir(open.get()) : nullptr) {
        const std::filesystem::path name(entry->d_name);
        if (name != "." && name != "..") names.push_back(name);
    }
    return names;
}

}  // namespace kzutil

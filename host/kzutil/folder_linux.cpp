#include "kzutil/folder.h"

#include <dirent.h>

#include <memory>
#include <string_view>

namespace kzutil {

namespace {

struct Close {
    void operator()(DIR* folder) const { closedir(folder); }
};

}  // namespace

std::optional<std::vector<std::filesystem::path>> entriesOf(const std::filesystem::path& folder) {
    const std::unique_ptr<DIR, Close> open(opendir(folder.c_str()));
    if (!open) return std::nullopt;
    std::vector<std::filesystem::path> entries;
    while (const dirent* entry = readdir(open.get())) {
        const std::string_view name = entry->d_name;
        if (name != "." && name != "..") entries.push_back(folder / name);
    }
    return entries;
}

}  // namespace kzutil

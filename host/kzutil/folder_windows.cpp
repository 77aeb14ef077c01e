#include "kzutil/folder.h"

#include <memory>
#include <string_view>

#include "platform/winapi.h"

namespace kzutil {

namespace {

struct Close {
    void operator()(void* search) const { FindClose(search); }
};

}  // namespace

std::optional<std::vector<std::filesystem::path>> entriesOf(const std::filesystem::path& folder) {
    WIN32_FIND_DATAW found;
    const HANDLE first = FindFirstFileW((folder / "*").c_str(), &found);
    if (first == INVALID_HANDLE_VALUE) return std::nullopt;
    const std::unique_ptr<void, Close> search(first);
    std::vector<std::filesystem::path> entries;
    do {
        const std::wstring_view name = found.cFileName;
        if (name != L"." && name != L"..") entries.push_back(folder / name);
    } while (FindNextFileW(first, &found));
    return entries;
}

}  // namespace kzutil

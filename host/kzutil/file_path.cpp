#include "kzutil/file_path.h"

#include <new>

namespace {

constexpr WCHAR kSlash = WCHAR('/');
constexpr WCHAR kBackslash = WCHAR('\\');

// Empty when the platform does not tell.
kzutil::WideString programPath() {
    constexpr std::size_t kLongestPath = 32768;
    for (std::size_t size = 260; size <= kLongestPath * 2; size *= 2) {
        kzutil::WideString path(size, WCHAR());
        const std::size_t length = GetModuleFileNameW(nullptr, path.data(), static_cast<DWORD>(size));
        if (length == 0 && GetLastError() == ERROR_NOT_ENOUGH_MEMORY) throw std::bad_alloc();
        // A path that fills the buffer has been cut.
        if (length + 1 < size) return path.substr(0, length);
    }
    return {};
}

// Where paths are written with '/', the program's begins with one, and a backslash is a letter
// like any other.
bool usesBackslashes() {
    static const bool uses = [] {
        const kzutil::WideString path = programPath();
        return !path.empty() && path.front() != kSlash;
    }();
    return uses;
}

bool isSeparator(WCHAR character) {
    return character == kSlash || (character == kBackslash && usesBackslashes());
}

// A root ("/", "C:\") keeps its separator; any other folder ends without one.
AString programFolder() {
    const kzutil::WideString path = programPath();
    std::size_t end = path.size();
    while (end > 0 && !isSeparator(path[end - 1])) --end;
    const bool isRoot = end == 1 || (end == 3 && path[1] == WCHAR(':'));
    if (end > 0 && !isRoot) --end;
    return AString(kzutil::WideView(path).substr(0, end));
}

AString& baseFolder() {
    static AString folder;
    return folder;
}

}  // namespace

AFilePath::AFilePath() : m_path(baseFolder().IsEmpty() ? programFolder() : baseFolder()) {}

AFilePath& AFilePath::operator+=(const WCHAR* component) {
    const AString added(component);
    if (added.IsEmpty()) return *this;
    if (!m_path.IsEmpty() && !isSeparator(m_path[m_path.GetLength() - 1]))
        m_path += usesBackslashes() ? kBackslash : kSlash;
    m_path += added;
    return *this;
}

void AFilePath::setBaseFolder(const AString& folder) {
    baseFolder() = folder;
}

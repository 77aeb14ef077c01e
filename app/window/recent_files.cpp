#include "app/window/recent_files.h"

#include <algorithm>
#include <filesystem>
#include <system_error>

#include "kzutil/archive.h"
#include "kzutil/preference_manager.h"

namespace app::window {

std::string wholeName(const std::string& file) {
    std::error_code error;
    const std::filesystem::path path =
        std::filesystem::absolute(std::u8string(file.begin(), file.end()), error);
    if (error) return file;
    const std::u8string text = path.lexically_normal().u8string();
    return {text.begin(), text.end()};
}

void RecentFiles::read() {
    if (!APreferenceManager::readPrefs(this)) m_files.clear();
}

void RecentFiles::add(const std::string& file) {
    const std::string name = wholeName(file);
    std::erase(m_files, name);
    m_files.insert(m_files.begin(), name);
    if (m_files.size() > kMost) m_files.resize(kMost);
    APreferenceManager::writePrefs(this);
}

void RecentFiles::remove(const std::string& file) {
    if (std::erase(m_files, wholeName(file)) != 0) APreferenceManager::writePrefs(this);
}

const AString& RecentFiles::getClassName() const {
    static const AString name(_T("RecentFiles"));
    return name;
}

// The record:
//
//   tag 0   the base's record
//   tag 1   i32 count, then so many texts, newest first
int RecentFiles::orbiSerialize(AArchive& archive) {
    archive.TagStart();
    archive.Tag(0);
    if (ARoot::orbiSerialize(archive) == 0) return 0;
    archive.Tag(1);
    if (archive.isLoading()) {
        int count = 0;
        archive >> count;
        m_files.clear();
        for (int i = 0; i < std::clamp(count, 0, static_cast<int>(kMost)); ++i) {
            AString file;
            archive >> file;
            m_files.push_back(file.toUtf8());
        }
    } else {
        archive << static_cast<int>(m_files.size());
        for (const std::string& file : m_files) archive << AString::fromUtf8(file);
    }
    archive.TagEnd();
    return 1;
}

}  // namespace app::window

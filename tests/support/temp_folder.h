// A folder that lives as long as the test that made it.
#pragma once

#include <filesystem>
#include <fstream>
#include <random>
#include <string>

#include "kzutil/astring.h"

namespace test {

class TempFolder {
public:
    TempFolder() {
        std::random_device random;
        do m_path = std::filesystem::temp_directory_path() / ("kz-test-" + std::to_string(random()));
        while (!std::filesystem::create_directory(m_path));
    }
    ~TempFolder() {
        std::error_code ignored;
        std::filesystem::remove_all(m_path, ignored);
    }
    TempFolder(const TempFolder&) = delete;
    TempFolder& operator=(const TempFolder&) = delete;

    const std::filesystem::path& path() const { return m_path; }
    AString wide() const { return widePath(m_path); }
    std::filesystem::path write(const std::filesystem::path& name, const std::string& bytes) const {
        const std::filesystem::path file = m_path / name;
        std::filesystem::create_directories(file.parent_path());
        std::ofstream(file, std::ios::binary) << bytes;
        return file;
    }

    static AString widePath(const std::filesystem::path& path) {
        const std::u8string text = path.u8string();
        return AString::fromUtf8(std::string(text.begin(), text.end()));
    }

private:
    std::filesystem::path m_path;
};

}  // namespace test

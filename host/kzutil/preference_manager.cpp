#include "kzutil/preference_manager.h"

#include <algorithm>
#include <exception>
#include <fstream>
#include <optional>
#include <utility>

#include "kzutil/archive.h"
#include "kzutil/folder.h"
#include "kzutil/whole_file.h"

// Layout of a file: an archive (see archive.cpp) whose content is
//
//   0       text   class     of the object; another one's file is refused
//   n       ...    object    what the class's orbiSerialize wrote

namespace {

namespace fs = std::filesystem;
using Bytes = std::vector<BYTE>;

constexpr const char* kExtension = ".prefs";
constexpr std::size_t kLargestFile = std::size_t{1} << 20;  // no preferences are nearly so long

fs::path& folder() {
    static fs::path path;
    return path;
}

// None for a class whose name is no plain file name, and without a folder.
std::optional<fs::path> fileOf(const ARoot& object) {
    const std::string name = object.getClassName().toUtf8();
    const bool isPlain = std::ranges::all_of(name, [](char c) {
        return (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z') || (c >= '0' && c <= '9') || c == '_';
    });
    if (name.empty() || !isPlain || folder().empty()) return std::nullopt;
    return folder() / (name + kExtension);
}

// None when the file cannot be read. Of a file that is too long, no more than tells so.
std::optional<Bytes> readBytes(const fs::path& path) {
    std::ifstream file;
    constexpr int kAttempts = 16;  // on Windows, a file that is just being replaced cannot be opened
    for (int i = 0; i < kAttempts && !file.is_open(); ++i) file.open(path, std::ios::binary);
    if (!file.is_open()) return std::nullopt;
    Bytes bytes;
    char chunk[4096];
    while (bytes.size() <= kLargestFile && (file.read(chunk, sizeof chunk), file.gcount() > 0))
        bytes.insert(bytes.end(), chunk, chunk + file.gcount());
    return file.bad() ? std::nullopt : std::optional(std::move(bytes));
}

// None when the object cannot be stored.
std::optional<Bytes> stored(ARoot& object) {
    AArchive archive;
    archive << object.getClassName();
    if (object.orbiSerialize(archive) == 0) return std::nullopt;
    Bytes bytes = archive.takeBytes();
    return archive.getError().empty() ? std::optional(std::move(bytes)) : std::nullopt;
}

// Empty when the object was loaded; else the reason, and the object may be half loaded.
std::string load(ARoot& object, Bytes bytes) {
    AArchive archive(std::move(bytes));
    AString className;
    archive >> className;
    if (archive.getError().empty() && className != object.getClassName())
        return "these are preferences of another class";
    const int loaded = archive.getError().empty() ? object.orbiSerialize(archive) : 0;
    if (!archive.getError().empty()) return archive.getError();
    return loaded ? std::string() : "the preferences cannot be read";
}

// Puts the object back to what it was, unless it was loaded as a whole.
class Restoring {
public:
    Restoring(ARoot& object, Bytes bytes) : m_object(object), m_bytes(std::move(bytes)) {}
    Restoring(const Restoring&) = delete;
    Restoring& operator=(const Restoring&) = delete;
    ~Restoring() {
        try {
            if (!m_isLoaded) load(m_object, std::move(m_bytes));
        } catch (const std::exception&) {
        }
    }
    void keep() { m_isLoaded = true; }

private:
    ARoot& m_object;
    Bytes m_bytes;
    bool m_isLoaded = false;
};

std::string readInto(ARoot& object, const fs::path& file, const fs::file_status& status) {
    if (!fs::is_regular_file(status)) return "it is no ordinary file";
    std::optional<Bytes> bytes = readBytes(file);
    if (!bytes) return "it cannot be read";
    if (bytes->size() > kLargestFile) return "it is too long";
    std::optional<Bytes> before = stored(object);
    if (!before) return "the object cannot be stored";
    Restoring restoring(object, std::move(*before));
    std::string problem = load(object, std::move(*bytes));
    if (problem.empty()) restoring.keep();
    return problem;
}

std::string nameOf(const fs::path& file) {
    const std::u8string text = file.u8string();
    return {text.begin(), text.end()};
}

}  // namespace

int APreferenceManager::readPrefs(ARoot* object) noexcept {
    std::string ignored;
    return readPrefs(object, ignored);
}

int APreferenceManager::readPrefs(ARoot* object, std::string& problem) noexcept try {
    problem.clear();
    const std::optional<fs::path> file = fileOf(*object);
    if (!file) return 0;
    std::error_code error;
    const fs::file_status status = fs::status(*file, error);
    if (status.type() == fs::file_type::not_found) return 0;
    const std::string reason =
        status.type() == fs::file_type::none ? error.message() : readInto(*object, *file, status);
    if (!reason.empty()) problem = nameOf(*file) + ": " + reason;
    return reason.empty();
} catch (const std::exception&) {
    return 0;
}

int APreferenceManager::writePrefs(ARoot* object) noexcept try {
    const std::optional<fs::path> file = fileOf(*object);
    const std::optional<Bytes> bytes = file ? stored(*object) : std::nullopt;
    if (!bytes) return 0;
    std::error_code ignored;  // writing tells
    fs::create_directories(folder(), ignored);
    std::string reason;
    return kzutil::writeWholeFile(*file, {reinterpret_cast<const char*>(bytes->data()), bytes->size()},
                                  reason);
} catch (const std::exception&) {
    return 0;
}

bool APreferenceManager::removePrefs(std::string& problem) {
    problem.clear();
    std::error_code error;
    if (folder().empty() || fs::status(folder(), error).type() == fs::file_type::not_found) return true;
    const auto entries = kzutil::entriesOf(folder());
    if (!entries) return problem = nameOf(folder()) + ": cannot be listed", false;
    for (const fs::path& file : *entries) {
        if (file.extension() != kExtension) continue;
        fs::remove(file, error);
        if (error) problem = nameOf(file) + ": cannot be removed: " + error.message();
    }
    return problem.empty();
}

void APreferenceManager::setFolder(const fs::path& path) {
    folder() = path;
}

const fs::path& APreferenceManager::getFolder() {
    return folder();
}

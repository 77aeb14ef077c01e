#include "app/written_file.h"

#include <cerrno>
#include <fstream>
#include <random>
#include <system_error>

#include "app/session.h"

namespace app {

namespace {

namespace fs = std::filesystem;

[[noreturn]] void cannotWrite(const std::string& name, int error) {
    if (error == ENOENT) throw Failure{name + ": cannot be written: there is no such folder"};
    throw Failure{name + ": cannot be written" +
                  (error != 0 ? ": " + std::generic_category().message(error) : std::string())};
}

// Removes the file unless it got its name.
struct Temporary {
    fs::path path;
    bool isDone = false;

    ~Temporary() {
        std::error_code ignored;
        if (!isDone) fs::remove(path, ignored);
    }
};

fs::path temporaryBeside(const fs::path& target) {
    std::random_device random;
    for (;;) {
        const fs::path path = target.parent_path() / (".kzdraw-" + std::to_string(random()) + ".part");
        std::error_code ignored;
        if (!fs::exists(path, ignored)) return path;
    }
}

void writeBytes(const std::string& name, const fs::path& path, std::string_view bytes) {
    errno = 0;
    std::ofstream file(path, std::ios::binary);
    if (!file) cannotWrite(name, errno);
    file.write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
    file.close();
    if (!file) cannotWrite(name, errno);
}

}  // namespace

std::string extensionOf(const std::string& name) {
    const std::u8string text = filePath(name).extension().u8string();
    std::string extension(text.begin(), text.end());
    for (char& c : extension) c = c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
    return extension;
}

void writeFile(const std::string& name, std::string_view bytes) {
    fs::path path = filePath(name);
    std::error_code failure;
    const fs::file_status status = fs::status(path, failure);
    if (fs::is_directory(status)) throw Failure{name + ": cannot be written: it is a folder"};
    if (fs::exists(status) && !fs::is_regular_file(status)) return writeBytes(name, path, bytes);

    // Behind a link, not in its place.
    if (fs::is_symlink(fs::symlink_status(path, failure))) {
        const fs::path resolved = fs::weakly_canonical(path, failure);
        if (!failure) path = resolved;
    }
    errno = 0;
    // Opened, but not emptied: a file that may not be changed is not replaced.
    if (fs::exists(status) && !std::ofstream(path, std::ios::binary | std::ios::in)) cannotWrite(name, errno);
    Temporary temporary{temporaryBeside(path)};
    writeBytes(name, temporary.path, bytes);
    if (fs::exists(status)) fs::permissions(temporary.path, status.permissions(), failure);
    fs::rename(temporary.path, path, failure);
    if (failure) throw Failure{name + ": cannot be written: " + failure.message()};
    temporary.isDone = true;
}

}  // namespace app

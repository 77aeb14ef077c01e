#include "kzutil/whole_file.h"

#include <algorithm>
#include <cerrno>
#include <cstdint>
#include <fstream>
#include <random>
#include <system_error>

#include "kzutil/folder.h"

namespace kzutil {

namespace {

namespace fs = std::filesystem;

constexpr std::string_view kTemporaryEnd = ".part";
constexpr std::size_t kRandomDigits = 16;

// Removes the file unless it got its name.
struct Temporary {
    fs::path path;
    bool isDone = false;

    ~Temporary() {
        std::error_code ignored;
        if (!isDone) fs::remove(path, ignored);
    }
};

// What the names of a file's temporary files begin with. Cut, so that they are not too long for the system
// when the file's own name is nearly so.
fs::path::string_type temporaryBegin(const fs::path& target) {
    constexpr std::size_t kLongest = 200;
    return fs::path(".").native() + target.filename().native().substr(0, kLongest) + fs::path("-").native();
}

fs::path temporaryBeside(const fs::path& target) {
    std::random_device random;
    std::string digits;
    while (digits.size() < kRandomDigits) digits += "0123456789abcdef"[random() % 16];
    fs::path name(temporaryBegin(target));
    name += digits;
    name += kTemporaryEnd;
    return target.parent_path() / name;
}

bool isTemporaryOf(const fs::path::string_type& begin, const fs::path& file) {
    const fs::path::string_type name = file.filename().native();
    if (name.size() != begin.size() + kRandomDigits + kTemporaryEnd.size() || !name.starts_with(begin))
        return false;
    const auto digits = name.begin() + static_cast<std::ptrdiff_t>(begin.size());
    const auto end = digits + static_cast<std::ptrdiff_t>(kRandomDigits);
    return file.extension() == kTemporaryEnd &&
           std::all_of(digits, end, [](auto c) { return (c >= '0' && c <= '9') || (c >= 'a' && c <= 'f'); });
}

// What killed programs left. It may also be that of a program which is just writing: see replace().
void removeTemporariesOf(const fs::path& target) {
    const fs::path::string_type begin = temporaryBegin(target);
    const fs::path folder = target.has_parent_path() ? target.parent_path() : fs::path(".");
    const auto entries = entriesOf(folder);
    if (!entries) return;  // it can be written to all the same
    std::error_code ignored;
    for (const fs::path& file : *entries) {
        if (isTemporaryOf(begin, file)) fs::remove(file, ignored);
    }
}

std::string messageOf(const std::error_code& error) {
    return error == std::errc::no_such_file_or_directory ? "there is no such folder" : error.message();
}

// What errno tells of a stream that failed; not every failure sets it.
std::error_code lastError() {
    return {errno != 0 ? errno : EIO, std::generic_category()};
}

bool writeBytes(const fs::path& path, std::string_view bytes, std::error_code& error) {
    errno = 0;
    std::ofstream file(path, std::ios::binary);
    if (file) file.write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
    if (file) file.close();
    error = file ? std::error_code() : lastError();
    return !error;
}

// A file that may not be changed is not replaced. Opened, but not emptied.
bool mayChange(const fs::path& path, std::error_code& error) {
    errno = 0;
    error = std::ofstream(path, std::ios::binary | std::ios::in) ? std::error_code() : lastError();
    return !error;
}

// One attempt. `again`: another program was at the same file.
bool replace(const fs::path& path, const fs::file_status& status, std::string_view bytes,
             std::error_code& error, bool& again) {
    again = false;
    if (fs::exists(status) && !mayChange(path, error))
        return again = error == std::errc::permission_denied, false;  // on Windows, for a moment
    Temporary temporary{temporaryBeside(path)};
    if (!writeBytes(temporary.path, bytes, error)) return false;
    std::error_code ignored;
    if (fs::exists(status)) fs::permissions(temporary.path, status.permissions(), ignored);
    fs::rename(temporary.path, path, error);
    temporary.isDone = !error;
    // The other one took this temporary file for a left-over one; or, on Windows, has the file open.
    again = error == std::errc::no_such_file_or_directory || error == std::errc::permission_denied;
    return !error;
}

}  // namespace

bool writeWholeFile(fs::path path, std::string_view bytes, std::string& reason) {
    std::error_code error;
    const fs::file_status status = fs::status(path, error);
    if (fs::is_directory(status)) return reason = "it is a folder", false;
    const bool isLink = fs::is_symlink(fs::symlink_status(path, error));
    if (isLink && !fs::exists(status)) return reason = "it is a link that leads to no file", false;
    bool done = false;
    if (fs::exists(status) && !fs::is_regular_file(status)) {
        done = writeBytes(path, bytes, error);
    } else {
        // Behind a link, not in its place.
        if (isLink) {
            const fs::path resolved = fs::weakly_canonical(path, error);
            if (!error) path = resolved;
        }
        removeTemporariesOf(path);
        constexpr int kAttempts = 16;
        bool again = true;
        for (int i = 0; i < kAttempts && again && !done; ++i)
            done = replace(path, status, bytes, error, again);
    }
    if (!done) reason = messageOf(error);
    return done;
}

}  // namespace kzutil

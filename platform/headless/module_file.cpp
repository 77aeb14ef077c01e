#include "platform/headless/module_file.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <filesystem>

#include "platform/headless/shared_object.h"
#include "platform/headless/text.h"

namespace headless {
namespace {

constexpr std::size_t max_image_size = std::size_t{256} << 20;

class File {
public:
    // Does not wait for a writer when the path names a pipe.
    explicit File(const std::string& path)
        : descriptor_(open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK)) {}
    ~File() {
        if (descriptor_ >= 0) close(descriptor_);
    }
    File(const File&) = delete;
    File& operator=(const File&) = delete;

    int descriptor() const { return descriptor_; }

private:
    int descriptor_;
};

DWORD open_error() {
    if (errno == ENOENT || errno == ENOTDIR || errno == ENAMETOOLONG || errno == ELOOP)
        return ERROR_FILE_NOT_FOUND;
    return errno == ENOMEM || errno == EMFILE || errno == ENFILE ? ERROR_NOT_ENOUGH_MEMORY
                                                                 : ERROR_ACCESS_DENIED;
}

// With `whole`, a file beyond the limit is an error; otherwise it is cut.
ModuleFile read_file(const std::string& path, std::size_t limit, bool whole) {
    const File file(path);
    if (file.descriptor() < 0) return {open_error(), {}};
    struct stat status = {};
    if (fstat(file.descriptor(), &status) != 0 || !S_ISREG(status.st_mode)) return {ERROR_ACCESS_DENIED, {}};
    if (whole && static_cast<std::size_t>(status.st_size) > limit) return {ERROR_BAD_EXE_FORMAT, {}};

    ModuleFile result;
    result.bytes.resize(std::min(static_cast<std::size_t>(status.st_size), limit));
    std::size_t filled = 0;
    while (filled < result.bytes.size()) {
        const ssize_t count =
            read(file.descriptor(), result.bytes.data() + filled, result.bytes.size() - filled);
        if (count < 0 && errno == EINTR) continue;
        if (count < 0) return {ERROR_ACCESS_DENIED, {}};
        if (count == 0) break;  // the file shrank meanwhile
        filled += static_cast<std::size_t>(count);
    }
    result.bytes.resize(filled);
    return result;
}

}  // namespace

std::string module_file(LPCWSTR name) {
    const std::filesystem::path given = to_utf8(name);
    if (!given.has_parent_path()) {
        return std::filesystem::path(object_path(program_object())).replace_filename(given).string();
    }
    return std::filesystem::absolute(given).lexically_normal().string();
}

ModuleFile read_front(const std::string& path, std::size_t limit) {
    return read_file(path, limit, false);
}

ModuleFile read_whole(const std::string& path) {
    return read_file(path, max_image_size, true);
}

}  // namespace headless

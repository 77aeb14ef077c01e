#include "app/written_file.h"

#include "app/session.h"
#include "kzutil/whole_file.h"

namespace app {

std::string extensionOf(const std::string& name) {
    const std::u8string text = filePath(name).extension().u8string();
    std::string extension(text.begin(), text.end());
    for (char& c : extension) c = c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
    return extension;
}

void writeFile(const std::string& name, std::string_view bytes) {
    std::string reason;
    if (!kzutil::writeWholeFile(filePath(name), bytes, reason))
        throw Failure{name + ": cannot be written: " + reason};
}

}  // namespace app

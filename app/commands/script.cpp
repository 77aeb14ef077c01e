#include <cerrno>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <system_error>

#include "app/commands/commands.h"
#include "app/script/interpreter.h"

namespace app {

int runScript(const std::string& file) {
    Session session;
    if (file == "-") {
        interpret(session, std::cin, "-");
        return 0;
    }
    const std::filesystem::path path = filePath(file);
    std::error_code ignored;
    if (std::filesystem::is_directory(path, ignored)) throw Failure{file + ": is a folder"};
    errno = 0;
    std::ifstream script(path, std::ios::binary);
    if (!script) {
        if (errno == ENOENT) throw Failure{file + ": there is no such file"};
        throw Failure{file + ": cannot be read: " + std::generic_category().message(errno)};
    }
    interpret(session, script, file);
    return 0;
}

}  // namespace app

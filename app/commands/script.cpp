#include <filesystem>
#include <fstream>
#include <iostream>

#include "app/commands/commands.h"
#include "app/script/interpreter.h"

namespace app {

int runScript(const std::string& file) {
    Session session;
    if (file == "-") {
        interpret(session, std::cin, "-");
        return 0;
    }
    const std::filesystem::path path(std::u8string(file.begin(), file.end()));
    std::ifstream script(path, std::ios::binary);
    if (!script || std::filesystem::is_directory(path)) throw Failure{file + ": cannot be read"};
    interpret(session, script, file);
    return 0;
}

}  // namespace app

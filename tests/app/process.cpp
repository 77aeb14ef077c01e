#include "process.h"

#include <iterator>

#include "support/program_folder.h"
#include "support/temp_folder.h"

namespace test {

std::string utf8(const std::filesystem::path& path) {
    const std::u8string text = path.u8string();
    return {text.begin(), text.end()};
}

std::string readText(const std::filesystem::path& file) {
    std::ifstream stream(file, std::ios::binary);
    std::string text(std::istreambuf_iterator<char>(stream), {});
    for (std::size_t at = 0; (at = text.find("\r\n", at)) != text.npos; ++at) text.erase(at, 1);
    return text;
}

Outcome runProgram(const std::filesystem::path& program, const std::vector<std::string>& arguments,
                   const std::string& input) {
    const TempFolder folder;
    const std::filesystem::path in = folder.write("in", input);
    const std::filesystem::path out = folder.write("out", "");
    const std::filesystem::path err = folder.write("err", "");
    const int status = runProcess(program, arguments, in, out, err);
    return {status, readText(out), readText(err)};
}

std::filesystem::path kzdraw() {
    return programFolder() / KZ_PROGRAM;
}

Outcome runKzdraw(const std::vector<std::string>& arguments, const std::string& input) {
    return runProgram(kzdraw(), arguments, input);
}

}  // namespace test

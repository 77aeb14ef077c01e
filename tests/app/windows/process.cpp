#include "app/process.h"

#include "kzutil/utf.h"
#include "platform/winapi.h"
#include "support/started_process.h"

namespace test {

namespace {

// As the C runtime takes a command line apart: a backslash is special only before a quote.
std::string quotedArgument(const std::string& word) {
    std::string line = "\"";
    std::size_t backslashes = 0;
    for (const char c : word) {
        if (c == '"') line.append(backslashes + 1, '\\');
        backslashes = c == '\\' ? backslashes + 1 : 0;
        line += c;
    }
    return line + std::string(backslashes, '\\') + '"';
}

HANDLE openInherited(const std::filesystem::path& file, DWORD access, DWORD disposition) {
    SECURITY_ATTRIBUTES inherited{sizeof inherited, nullptr, TRUE};
    return CreateFileW(file.c_str(), access, FILE_SHARE_READ | FILE_SHARE_WRITE, &inherited, disposition, 0,
                       nullptr);
}

}  // namespace

int runProcess(const std::filesystem::path& program, const std::vector<std::string>& arguments,
               const std::filesystem::path& in, const std::filesystem::path& out,
               const std::filesystem::path& err) {
    std::string line = quotedArgument(utf8(program));
    for (const std::string& word : arguments) line += ' ' + quotedArgument(word);

    STARTUPINFOW startup{};
    startup.dwFlags = STARTF_USESTDHANDLES;
    startup.hStdInput = openInherited(in, GENERIC_READ, OPEN_EXISTING);
    startup.hStdOutput = openInherited(out, GENERIC_WRITE, TRUNCATE_EXISTING);
    startup.hStdError = openInherited(err, GENERIC_WRITE, TRUNCATE_EXISTING);
    const PROCESS_INFORMATION process = startProcess(program.wstring(), kzutil::widen(line), startup);
    for (const HANDLE file : {startup.hStdInput, startup.hStdOutput, startup.hStdError}) CloseHandle(file);
    WaitForSingleObject(process.hProcess, INFINITE);
    DWORD status = 0;
    GetExitCodeProcess(process.hProcess, &status);
    CloseHandle(process.hThread);
    CloseHandle(process.hProcess);
    return static_cast<int>(status);
}

}  // namespace test

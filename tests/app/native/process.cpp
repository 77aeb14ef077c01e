#include "app/process.h"

#include <fcntl.h>
#include <spawn.h>
#include <sys/wait.h>

#include <csignal>
#include <system_error>

extern char** environ;

namespace test {

int runProcess(const std::filesystem::path& program, const std::vector<std::string>& arguments,
               const std::filesystem::path& in, const std::filesystem::path& out,
               const std::filesystem::path& err) {
    std::vector<std::string> words{program.string()};
    words.insert(words.end(), arguments.begin(), arguments.end());
    std::vector<char*> argv;
    for (std::string& word : words) argv.push_back(word.data());
    argv.push_back(nullptr);

    posix_spawn_file_actions_t files;
    posix_spawn_file_actions_init(&files);
    posix_spawn_file_actions_addopen(&files, 0, in.c_str(), O_RDONLY, 0);
    posix_spawn_file_actions_addopen(&files, 1, out.c_str(), O_WRONLY, 0);
    posix_spawn_file_actions_addopen(&files, 2, err.c_str(), O_WRONLY, 0);
    pid_t process = 0;
    const int failed = posix_spawn(&process, program.c_str(), &files, nullptr, argv.data(), environ);
    posix_spawn_file_actions_destroy(&files);
    if (failed != 0) throw std::system_error(failed, std::generic_category(), program.string());
    int status = 0;
    waitpid(process, &status, 0);
    return WIFEXITED(status) ? WEXITSTATUS(status) : -WTERMSIG(status);
}

}  // namespace test

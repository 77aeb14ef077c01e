#include "app/web/serve.h"

#include <fcntl.h>
#include <spawn.h>
#include <unistd.h>

#include <csignal>
#include <cstdlib>
#include <filesystem>

#include "app/output.h"
#include "app/session.h"
#include "app/web/page_server.h"
#include "app/web/session_main.h"

extern char** environ;

namespace app {

namespace {

std::string thisProgram() {
    return std::filesystem::read_symlink("/proc/self/exe").string();
}

bool hasDesktop() {
    return std::getenv("DISPLAY") != nullptr || std::getenv("WAYLAND_DISPLAY") != nullptr;
}

// What that program says is nobody's business; where there is none, the address has been printed.
void openPage(std::string address) {
    std::string program = "xdg-open";
    char* arguments[] = {program.data(), address.data(), nullptr};
    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    posix_spawn_file_actions_addopen(&actions, STDIN_FILENO, "/dev/null", O_RDONLY, 0);
    posix_spawn_file_actions_addopen(&actions, STDOUT_FILENO, "/dev/null", O_WRONLY, 0);
    posix_spawn_file_actions_addopen(&actions, STDERR_FILENO, "/dev/null", O_WRONLY, 0);
    posix_spawn_file_actions_addclosefrom_np(&actions, 3);
    pid_t pid = -1;
    posix_spawnp(&pid, program.c_str(), &actions, nullptr, arguments, environ);
    posix_spawn_file_actions_destroy(&actions);
}

// The signals that end the program are blocked from here on, for all threads, and taken by one of them.
class EndSignals {
public:
    explicit EndSignals(web::PageServer& server) {
        sigemptyset(&m_signals);
        for (const int signal : {SIGINT, SIGTERM, SIGHUP}) sigaddset(&m_signals, signal);
        pthread_sigmask(SIG_BLOCK, &m_signals, &m_before);
        m_thread = std::thread([this, &server] {
            int signal = 0;
            sigwait(&m_signals, &signal);
            server.stop();
        });
    }
    ~EndSignals() {
        pthread_kill(m_thread.native_handle(), SIGTERM);  // where the server ended by itself
        m_thread.join();
        pthread_sigmask(SIG_SETMASK, &m_before, nullptr);
    }
    EndSignals(const EndSignals&) = delete;
    EndSignals& operator=(const EndSignals&) = delete;

private:
    sigset_t m_signals;
    sigset_t m_before;
    std::thread m_thread;
};

}  // namespace

int runServe(const ServeOptions& options) {
    for (const std::string& file : options.files) {
        if (!std::filesystem::exists(filePath(file))) throw Failure{file + ": there is no such file"};
    }
    web::PageServer::Options serving;
    serving.sessions.program = thisProgram();
    serving.sessions.files = options.files;
    serving.port = options.port;
    web::PageServer server(serving);
    const EndSignals signals(server);
    printLine(server.address());
    flushOutput();
    if (options.opensPage && hasDesktop()) openPage(server.address());
    server.run();
    return 0;
}

int runServedSession(int socket, std::vector<std::string> files) {
    return web::runSession(socket, std::move(files));
}

}  // namespace app

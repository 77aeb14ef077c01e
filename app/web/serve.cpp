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

// The signals that end the program, blocked while it lives: for all threads that are made meanwhile.
class EndSignals {
public:
    EndSignals() {
        sigemptyset(&m_signals);
        for (const int signal : {SIGINT, SIGTERM, SIGHUP}) sigaddset(&m_signals, signal);
        pthread_sigmask(SIG_BLOCK, &m_signals, &m_before);
    }
    ~EndSignals() { pthread_sigmask(SIG_SETMASK, &m_before, nullptr); }
    EndSignals(const EndSignals&) = delete;
    EndSignals& operator=(const EndSignals&) = delete;

    // Returns when one has come.
    void wait() const {
        int signal = 0;
        sigwait(&m_signals, &signal);
    }
    const sigset_t& before() const { return m_before; }

private:
    sigset_t m_signals;
    sigset_t m_before;
};

// Stops the server when the program is to end.
class Stopper {
public:
    Stopper(web::PageServer& server, const EndSignals& signals)
        : m_thread([&server, &signals] {
              signals.wait();
              server.stop();
          }) {}
    ~Stopper() {
        pthread_kill(m_thread.native_handle(), SIGTERM);  // where the server has ended by itself
        m_thread.join();
    }
    Stopper(const Stopper&) = delete;
    Stopper& operator=(const Stopper&) = delete;

private:
    std::thread m_thread;
};

// What that program says is nobody's business; where there is none, the address has been printed.
void openPage(std::string address, const sigset_t& signals) {
    std::string program = "xdg-open";
    char* arguments[] = {program.data(), address.data(), nullptr};
    posix_spawnattr_t attributes;
    posix_spawnattr_init(&attributes);
    posix_spawnattr_setsigmask(&attributes, &signals);
    posix_spawnattr_setflags(&attributes, POSIX_SPAWN_SETSIGMASK);
    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    posix_spawn_file_actions_addopen(&actions, STDIN_FILENO, "/dev/null", O_RDONLY, 0);
    posix_spawn_file_actions_addopen(&actions, STDOUT_FILENO, "/dev/null", O_WRONLY, 0);
    posix_spawn_file_actions_addopen(&actions, STDERR_FILENO, "/dev/null", O_WRONLY, 0);
    posix_spawn_file_actions_addclosefrom_np(&actions, STDERR_FILENO + 1);
    pid_t pid = -1;
    posix_spawnp(&pid, program.c_str(), &actions, &attributes, arguments, environ);
    posix_spawn_file_actions_destroy(&actions);
    posix_spawnattr_destroy(&attributes);
}

}  // namespace

int runServe(const ServeOptions& options) {
    for (const std::string& file : options.files) {
        if (!std::filesystem::exists(filePath(file))) throw Failure{file + ": there is no such file"};
    }
    web::PageServer::Options serving;
    serving.sessions.program = thisProgram();
    serving.sessions.files = options.files;
    serving.port = options.port;
    // The sessions leave these signals alone, too: they end with the server.
    const EndSignals signals;
    web::PageServer server(serving);
    const Stopper stopper(server, signals);
    printLine(server.address());
    flushOutput();
    if (options.opensPage && hasDesktop()) openPage(server.address(), signals.before());
    server.run();
    return 0;
}

int runServedSession(int socket, std::vector<std::string> files) {
    return web::runSession(socket, std::move(files));
}

}  // namespace app

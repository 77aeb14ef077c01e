#include "app/web/session_process.h"

#include <fcntl.h>
#include <spawn.h>
#include <sys/socket.h>
#include <sys/wait.h>
#include <unistd.h>

#include <csignal>
#include <cstring>
#include <new>

#include "app/session.h"

extern char** environ;

namespace app::web {

namespace {

constexpr int kSocketOfChild = 3;
// A page has one line, six tiles and a download under way at most.
constexpr std::size_t kMostCalls = 10;
constexpr std::chrono::seconds kPatience{3};

pid_t start(const std::string& program, const std::vector<std::string>& files, int socket) {
    std::vector<std::string> words{program, "session", std::to_string(kSocketOfChild), "--"};
    words.insert(words.end(), files.begin(), files.end());
    std::vector<char*> arguments;
    for (std::string& word : words) arguments.push_back(word.data());
    arguments.push_back(nullptr);
    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    posix_spawn_file_actions_addopen(&actions, STDIN_FILENO, "/dev/null", O_RDONLY, 0);
    posix_spawn_file_actions_adddup2(&actions, socket, kSocketOfChild);
    // Connections of the server, too: one that a session held would not close.
    posix_spawn_file_actions_addclosefrom_np(&actions, kSocketOfChild + 1);
    pid_t pid = -1;
    const int error = posix_spawn(&pid, program.c_str(), &actions, nullptr, arguments.data(), environ);
    posix_spawn_file_actions_destroy(&actions);
    if (error != 0) throw Failure{"a session cannot be started: " + std::string(std::strerror(error))};
    return pid;
}

}  // namespace

SessionProcess::SessionProcess(const std::string& program, const std::vector<std::string>& files) {
    int ends[2];
    if (::socketpair(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0, ends) != 0)
        throw Failure{"a session cannot be started: " + std::string(std::strerror(errno))};
    m_socket = ends[0];
    try {
        m_pid = start(program, files, ends[1]);
        m_reader = std::thread([this] { read(); });
    } catch (...) {
        ::close(ends[0]);
        ::close(ends[1]);
        throw;
    }
    ::close(ends[1]);
}

SessionProcess::~SessionProcess() {
    ::shutdown(m_socket, SHUT_WR);
    {
        std::unique_lock lock(m_mutex);
        if (!m_changed.wait_for(lock, kPatience, [this] { return m_ended; })) ::kill(m_pid, SIGKILL);
    }
    m_reader.join();
    ::close(m_socket);
    while (::waitpid(m_pid, nullptr, 0) < 0 && errno == EINTR) {
    }
}

// The process closes its end when it ends, however it does.
void SessionProcess::read() {
    try {
        for (Frame frame; receiveFrame(m_socket, frame);) {
            const std::lock_guard lock(m_mutex);
            if (frame.call == 0) {
                m_reason = frame.payload;
                continue;
            }
            const auto call = m_calls.find(frame.call);
            if (call == m_calls.end()) continue;
            if (call->second) {
                *call->second = {frame.kind == '+' ? Answer::Kind::done : Answer::Kind::refused,
                                 std::move(frame.payload)};
            }
            m_calls.erase(call);
            m_changed.notify_all();
        }
    } catch (const std::bad_alloc&) {
        ::kill(m_pid, SIGKILL);
    }
    const std::lock_guard lock(m_mutex);
    m_ended = true;
    m_changed.notify_all();
}

bool SessionProcess::hasEnded() {
    const std::lock_guard lock(m_mutex);
    return m_ended;
}

Answer SessionProcess::call(char kind, std::string payload, std::chrono::milliseconds patience) {
    Answer answer;
    Frame frame{0, kind, std::move(payload)};
    {
        const std::lock_guard lock(m_mutex);
        if (m_ended) return {Answer::Kind::ended, m_reason};
        if (m_calls.size() >= kMostCalls) return {Answer::Kind::busy, {}};
        frame.call = ++m_lastCall != 0 ? m_lastCall : ++m_lastCall;
        m_calls[frame.call] = &answer;
    }
    {
        const std::lock_guard lock(m_sending);
        sendFrame(m_socket, frame);  // a process that is gone is seen by the reader
    }
    std::unique_lock lock(m_mutex);
    const auto isOver = [&] { return m_ended || !m_calls.contains(frame.call); };
    if (patience == std::chrono::milliseconds::zero())
        m_changed.wait(lock, isOver);
    else if (!m_changed.wait_for(lock, patience, isOver)) {
        m_calls[frame.call] = nullptr;
        return {Answer::Kind::busy, {}};
    }
    if (m_calls.erase(frame.call) != 0) return {Answer::Kind::ended, m_reason};
    return answer;
}

}  // namespace app::web

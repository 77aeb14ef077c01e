// SessionProcess: a session in a process of its own, as the server sees it.
//
//     SessionProcess process(program, files);
//     Answer answer = process.call('L', "print state");   // waits; any number of threads may
//
// The process ends with the object: it is asked to, and killed if it does not.
#pragma once

#include <sys/types.h>

#include <chrono>
#include <condition_variable>
#include <csignal>
#include <map>
#include <mutex>
#include <string>
#include <thread>
#include <vector>

#include "app/web/frame.h"

namespace app::web {

struct Answer {
    enum class Kind { done, refused, busy, ended };
    Kind kind = Kind::ended;
    std::string text;  // what was asked for; the reason when it was refused
};

class SessionProcess {
public:
    // Starts `program` ("session SOCKET FILE…"). Raises Failure.
    SessionProcess(const std::string& program, const std::vector<std::string>& files);
    ~SessionProcess();
    SessionProcess(const SessionProcess&) = delete;
    SessionProcess& operator=(const SessionProcess&) = delete;

    // `patience`: how long to wait for an answer; zero: for ever. Then it counts as busy.
    Answer call(char kind, std::string payload, std::chrono::milliseconds patience = {});
    bool hasEnded();
    // At once, whatever it does.
    void kill() { ::kill(m_pid, SIGKILL); }
    pid_t pid() const { return m_pid; }

private:
    void read();

    int m_socket = -1;
    pid_t m_pid = -1;
    std::mutex m_sending;

    std::mutex m_mutex;  // guards what follows
    std::condition_variable m_changed;
    std::map<std::uint32_t, Answer*> m_calls;  // those that wait; null when nobody does any more
    std::uint32_t m_lastCall = 0;
    std::string m_reason;  // why it ended
    bool m_ended = false;

    std::thread m_reader;
};

}  // namespace app::web

// Sessions: the sessions of all tabs, bounded in number, each for as long as its page listens.
//
//     std::shared_ptr<PageSession> session = sessions.start();   // null: there are as many as there may be
//     PageSession::Listener listener(*session);                  // while it lives, so does the session
//     while (listener.wait(event)) …                             // what the page is to be told
//
// A session without a listener ends after a while: a page that is loaded again finds it.
#pragma once

#include <memory>

#include "app/web/session_process.h"

namespace app::web {

using Clock = std::chrono::steady_clock;

class PageSession {
public:
    PageSession(const std::string& program, const std::vector<std::string>& files)
        : m_process(program, files) {}

    // Runs a line, and tells the listeners what it changed.
    Answer run(const std::string& line);
    // Everything else; see frame.h.
    Answer call(char kind, std::string payload, std::chrono::milliseconds patience = {}) {
        return m_process.call(kind, std::move(payload), patience);
    }
    SessionProcess& process() { return m_process; }

    class Listener {
    public:
        // None when the session has as many as it may.
        static std::unique_ptr<Listener> make(std::shared_ptr<PageSession> session);
        ~Listener();
        Listener(const Listener&) = delete;
        Listener& operator=(const Listener&) = delete;

        // Waits, not for long, for something to tell: a server-sent event, else a comment. False when the session
        // has ended.
        bool wait(std::string& event);

    private:
        explicit Listener(std::shared_ptr<PageSession> session) : m_session(std::move(session)) {}

        std::shared_ptr<PageSession> m_session;
        std::uint64_t m_seen = 0;  // the number of the change told last
        bool m_toldProgress = false;
    };

    // The listeners are woken, and find that it is over; a line that runs is given up.
    void close();
    // Nobody has listened for so long; a page that has only been loaded gets longer.
    bool isDeserted(Clock::duration grace);

private:
    SessionProcess m_process;

    std::mutex m_mutex;  // guards what follows
    std::condition_variable m_changed;
    std::uint64_t m_changes = 0;
    std::string m_running;  // the line
    Clock::time_point m_runningSince;
    int m_listeners = 0;
    bool m_wasListenedTo = false;
    Clock::time_point m_desertedSince = Clock::now();
    bool m_closed = false;
};

class Sessions {
public:
    struct Options {
        std::string program;             // kzdraw
        std::vector<std::string> files;  // that a session may open
        std::size_t most = 4;
        std::chrono::milliseconds grace{10000};  // for a page that is loaded again
    };

    explicit Sessions(Options options);
    // Ends them all.
    ~Sessions();

    // The name of the new session; empty when there are as many as there may be. Raises Failure.
    std::string start();
    // Null when there is none of that name.
    std::shared_ptr<PageSession> find(const std::string& name);
    std::size_t count();
    const Options& options() const { return m_options; }
    void closeAll();

private:
    bool makeRoom();
    void endDeserted();

    const Options m_options;
    std::mutex m_mutex;  // guards what follows
    std::condition_variable m_changed;
    std::map<std::string, std::shared_ptr<PageSession>> m_sessions;
    bool m_ends = false;

    std::thread m_janitor;
};

// So many random hexadecimal digits.
std::string randomName(std::size_t digits);

}  // namespace app::web

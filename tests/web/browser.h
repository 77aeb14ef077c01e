// A browser for tests: speaks to a server of this process as a page would, or as nobody should.
#pragma once

#include <gtest/gtest.h>
#include <httplib.h>

#include <memory>
#include <nlohmann/json.hpp>
#include <thread>

#include "app/web/page_server.h"

namespace test {

using Json = nlohmann::json;

// A server that answers while it lives, with the program's own sessions.
class RunningServer {
public:
    // Small limits, so that a test reaches them.
    static app::web::PageServer::Options options(std::vector<std::string> files = {});

    explicit RunningServer(const app::web::PageServer::Options& options);
    ~RunningServer();

    app::web::PageServer& operator*() { return *m_server; }
    app::web::PageServer* operator->() { return m_server.get(); }

private:
    std::unique_ptr<app::web::PageServer> m_server;
    std::thread m_thread;
};

// A page with its cookie and its origin.
class Tab {
public:
    explicit Tab(RunningServer& server);
    ~Tab();

    httplib::Headers headers() const;  // those of its requests
    httplib::Result get(const std::string& path);
    httplib::Result post(const std::string& path, const std::string& body,
                         const char* type = "application/json");

    // A session of its own, kept by its events until leave().
    void start();
    void leave();
    const std::string& session() const { return m_session; }
    std::string path(const std::string& rest) const { return "/sessions/" + m_session + "/" + rest; }
    // What the lines answer: the array; null, with a failure, when they are refused.
    Json run(const std::vector<std::string>& lines);
    // The first event that holds the text, waiting for it.
    bool waitForEvent(const std::string& text);

private:
    void listen();

    RunningServer& m_server;
    httplib::Client m_client;
    std::string m_session;
    std::mutex m_mutex;
    std::condition_variable m_changed;
    std::string m_events;
    bool m_left = false;
    std::thread m_listener;
};

// A connection that sends what it likes.
class RawConnection {
public:
    explicit RawConnection(int port);
    ~RawConnection();
    RawConnection(const RawConnection&) = delete;
    RawConnection& operator=(const RawConnection&) = delete;

    // False when the server has closed it.
    bool send(const std::string& bytes);
    // Until the server closes it.
    std::string readAll();
    // With a reset, as a browser that is killed.
    void abort();

private:
    int m_socket;
};

// Returns when it is true. A test that never gets there is ended by CTest.
template <class Condition>
void waitUntil(Condition condition) {
    while (!condition()) std::this_thread::yield();
}

// Of this process.
std::size_t openFiles();

}  // namespace test

// BoundedServer: a server that nobody can keep from answering the next request.
//
// A connection has a thread of its own, of which there are so many. When all are taken, the oldest connection whose
// thread waits for the other side to send something gives way. A request has to arrive in time and within a size.
#pragma once

#include <httplib.h>

#include <atomic>
#include <chrono>
#include <map>
#include <mutex>

namespace app::web {

// Connections whose threads wait for the other side to send something.
class WaitingConnections {
public:
    // Connections are numbered in the order in which they came.
    void add(std::uint64_t number, int socket);
    void remove(std::uint64_t number);
    // Closes the oldest one, or else the one that waits next.
    void makeRoom();
    // So many connections lack a thread.
    void setLacking(std::size_t count);
    void closeAll();

private:
    bool dropOldest();

    std::mutex m_mutex;
    std::map<std::uint64_t, int> m_sockets;  // those that were closed here are -1
    std::size_t m_lacking = 0;               // that nobody gave way to yet
};

class BoundedServer : public httplib::Server {
public:
    struct Limits {
        std::size_t threads = 48;
        std::size_t headBytes = 32 << 10;
        std::size_t bodyBytes = std::size_t{256} << 20;
        std::chrono::milliseconds idle{5000};      // between two requests
        std::chrono::milliseconds head{5000};      // for the head of a request
        std::chrono::milliseconds body{60000};     // for its body
        std::chrono::milliseconds response{5000};  // until the other side takes more
    };

    explicit BoundedServer(const Limits& limits);
    bool isRunning() const { return is_running(); }
    const Limits& limits() const { return m_limits; }

protected:
    // After the port is taken: so many connections may come at once.
    void widenQueue();
    // Ends the answering of requests, also where it has not begun yet.
    void stop();
    // What the head of a request announces; more than bodyBytes for nonsense.
    std::size_t bodySize(const httplib::Request& request) const;

private:
    bool process_and_close_socket(socket_t socket) override;

    const Limits m_limits;
    WaitingConnections m_waiting;
    std::atomic<std::uint64_t> m_connections = 0;
};

}  // namespace app::web

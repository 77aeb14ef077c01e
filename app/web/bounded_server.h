// BoundedServer: a server that nobody can keep from answering the next request.
//
// A connection has a thread of its own, of which there are so many. When all are taken, the connection that has been
// silent or slow for the longest time gives way; those whose request is being answered do not. A request has to
// arrive in time and within a size.
#pragma once

#include <httplib.h>

#include <chrono>
#include <list>
#include <mutex>

namespace app::web {

// Connections whose request has not arrived yet, the oldest first.
class WaitingConnections {
public:
    using Place = std::list<int>::iterator;

    Place add(int socket);
    void remove(Place place);
    // Closes the oldest one. False when there is none.
    bool dropOldest();

private:
    std::mutex m_mutex;
    std::list<int> m_sockets;  // -1: dropped
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
    const Limits& limits() const { return m_limits; }

protected:
    // What the head of a request announces; more than bodyBytes for nonsense.
    std::size_t bodySize(const httplib::Request& request) const;

private:
    bool process_and_close_socket(socket_t socket) override;

    const Limits m_limits;
    WaitingConnections m_waiting;
};

}  // namespace app::web

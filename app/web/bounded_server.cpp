#include "app/web/bounded_server.h"

#include <arpa/inet.h>
#include <poll.h>
#include <sys/socket.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <charconv>

namespace app::web {

namespace {

using std::chrono::milliseconds;

// False when the socket is not ready in time.
bool waitFor(int socket, short events, std::chrono::steady_clock::time_point deadline) {
    for (;;) {
        const auto left =
            std::chrono::duration_cast<milliseconds>(deadline - std::chrono::steady_clock::now()).count();
        pollfd waiting{socket, events, 0};
        const int ready = ::poll(&waiting, 1, static_cast<int>(std::max<long>(left, 0)));
        if (ready > 0) return true;
        if (ready == 0 || errno != EINTR) return false;
    }
}

// A connection with a deadline and a number of bytes for what it may still send.
class LimitedStream : public httplib::Stream {
public:
    LimitedStream(WaitingConnections& waiting, std::uint64_t number, int socket, milliseconds response)
        : m_waiting(waiting), m_number(number), m_socket(socket), m_response(response) {}

    void expect(milliseconds time, std::size_t bytes) {
        m_deadline = std::chrono::steady_clock::now() + time;
        m_bytes = bytes;
    }
    // Bytes that may still come.
    std::size_t expected() const { return m_bytes; }
    // Waits for the first byte of a request.
    bool waitForMore(milliseconds time) {
        return m_begin < m_end || (waitForBytes(std::chrono::steady_clock::now() + time) && fill());
    }

    bool is_readable() const override {
        return m_begin < m_end || waitFor(m_socket, POLLIN, std::chrono::steady_clock::now());
    }
    // False, too, when the other side has closed the connection.
    bool is_writable() const override {
        char byte = 0;
        const ssize_t peeked = ::recv(m_socket, &byte, 1, MSG_PEEK | MSG_DONTWAIT);
        const bool isOpen = peeked > 0 || (peeked < 0 && (errno == EAGAIN || errno == EWOULDBLOCK));
        return isOpen && waitFor(m_socket, POLLOUT, std::chrono::steady_clock::now() + m_response);
    }
    ssize_t read(char* bytes, std::size_t size) override {
        if (m_bytes == 0) return -1;
        if (m_begin == m_end && (!waitForBytes(m_deadline) || !fill())) return -1;
        const std::size_t count = std::min({size, m_end - m_begin, m_bytes});
        std::copy_n(m_buffer.begin() + static_cast<std::ptrdiff_t>(m_begin), count, bytes);
        m_begin += count;
        m_bytes -= count;
        return static_cast<ssize_t>(count);
    }
    ssize_t write(const char* bytes, std::size_t size) override {
        if (!waitFor(m_socket, POLLOUT, std::chrono::steady_clock::now() + m_response)) return -1;
        return ::send(m_socket, bytes, size, MSG_NOSIGNAL | MSG_DONTWAIT);
    }
    void get_remote_ip_and_port(std::string& ip, int& port) const override { local(ip, port); }
    void get_local_ip_and_port(std::string& ip, int& port) const override { local(ip, port); }
    socket_t socket() const override { return m_socket; }

private:
    // Both ends are on this machine.
    static void local(std::string& ip, int& port) {
        ip = "127.0.0.1";
        port = 0;
    }
    bool waitForBytes(std::chrono::steady_clock::time_point deadline) {
        if (waitFor(m_socket, POLLIN, std::chrono::steady_clock::now())) return true;
        m_waiting.add(m_number, m_socket);
        const bool came = waitFor(m_socket, POLLIN, deadline);
        m_waiting.remove(m_number);
        return came;
    }
    bool fill() {
        const ssize_t received = ::recv(m_socket, m_buffer.data(), m_buffer.size(), 0);
        m_begin = 0;
        m_end = received > 0 ? static_cast<std::size_t>(received) : 0;
        return received > 0;
    }

    WaitingConnections& m_waiting;
    const std::uint64_t m_number;
    const int m_socket;
    const milliseconds m_response;
    std::chrono::steady_clock::time_point m_deadline;
    std::size_t m_bytes = 0;
    std::array<char, 16384> m_buffer;
    std::size_t m_begin = 0, m_end = 0;
};

// Makes room for a connection that would have to wait for a thread.
class ConnectionThreads : public httplib::TaskQueue {
public:
    ConnectionThreads(std::size_t threads, WaitingConnections& waiting)
        : m_waiting(waiting), m_free(threads) {
        for (std::size_t i = 0; i < threads; ++i) m_threads.emplace_back([this] { work(); });
    }

    void enqueue(std::function<void()> job) override {
        const std::lock_guard lock(m_mutex);
        m_jobs.push_back(std::move(job));
        if (m_jobs.size() > m_free) m_waiting.makeRoom();
        m_changed.notify_one();
    }
    void shutdown() override {
        {
            const std::lock_guard lock(m_mutex);
            m_ends = true;
        }
        m_changed.notify_all();
        m_waiting.closeAll();
        for (std::thread& thread : m_threads) thread.join();
    }

private:
    void work() {
        std::unique_lock lock(m_mutex);
        for (;;) {
            m_changed.wait(lock, [this] { return m_ends || !m_jobs.empty(); });
            if (m_jobs.empty()) return;
            const std::function<void()> job = std::move(m_jobs.front());
            m_jobs.pop_front();
            --m_free;
            m_waiting.setLacking(m_jobs.size() > m_free ? m_jobs.size() - m_free : 0);
            lock.unlock();
            job();
            lock.lock();
            ++m_free;
        }
    }

    WaitingConnections& m_waiting;
    std::mutex m_mutex;  // guards what follows
    std::condition_variable m_changed;
    std::list<std::function<void()>> m_jobs;
    std::size_t m_free;
    bool m_ends = false;

    std::vector<std::thread> m_threads;
};

}  // namespace

void WaitingConnections::add(std::uint64_t number, int socket) {
    const std::lock_guard lock(m_mutex);
    m_sockets[number] = socket;
    if (m_lacking > 0 && dropOldest()) --m_lacking;
}

void WaitingConnections::remove(std::uint64_t number) {
    const std::lock_guard lock(m_mutex);
    m_sockets.erase(number);
}

void WaitingConnections::makeRoom() {
    const std::lock_guard lock(m_mutex);
    if (!dropOldest()) ++m_lacking;
}

void WaitingConnections::setLacking(std::size_t count) {
    const std::lock_guard lock(m_mutex);
    m_lacking = std::min(m_lacking, count);
}

void WaitingConnections::closeAll() {
    const std::lock_guard lock(m_mutex);
    while (dropOldest()) {
    }
}

// Its thread finds the end of what the other side sends, and closes the connection.
bool WaitingConnections::dropOldest() {
    for (auto& [number, socket] : m_sockets) {
        if (socket < 0) continue;
        ::shutdown(socket, SHUT_RDWR);
        socket = -1;
        return true;
    }
    return false;
}

BoundedServer::BoundedServer(const Limits& limits) : m_limits(limits) {
    new_task_queue = [this] { return new ConnectionThreads(m_limits.threads, m_waiting); };
    set_payload_max_length(limits.bodyBytes);
    set_tcp_nodelay(true);
}

// Who finds the queue full tries again only after a second.
void BoundedServer::widenQueue() {
    constexpr int kQueue = 1024;
    ::listen(svr_sock_, kQueue);
}

// The library forgets a stop that comes before it listens; what is shut down it gives up at once.
void BoundedServer::stop() {
    ::shutdown(svr_sock_, SHUT_RDWR);
    httplib::Server::stop();
}

// The bytes of the body that a head announces; more than any may have when it announces nonsense.
std::size_t BoundedServer::bodySize(const httplib::Request& request) const {
    if (!request.has_header("Content-Length")) return 0;
    const std::string text = request.get_header_value("Content-Length");
    std::size_t size = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), size);
    const bool isNumber = error == std::errc() && end == text.data() + text.size();
    return isNumber ? size : m_limits.bodyBytes + 1;
}

bool BoundedServer::process_and_close_socket(socket_t socket) {
    constexpr int kMostRequests = 1000;
    LimitedStream stream(m_waiting, ++m_connections, socket, m_limits.response);
    for (int requests = 0; requests < kMostRequests; ++requests) {
        if (svr_sock_ == INVALID_SOCKET || !stream.waitForMore(m_limits.idle)) break;
        stream.expect(m_limits.head, m_limits.headBytes);
        bool closed = false;
        const bool answered =
            process_request(stream, requests + 1 == kMostRequests, closed, [&](httplib::Request& request) {
                stream.expect(m_limits.body, std::min(bodySize(request), m_limits.bodyBytes));
            });
        // What is left of a body that was refused would be read as the next request.
        if (!answered || closed || stream.expected() > 0) break;
    }
    ::shutdown(socket, SHUT_RDWR);
    ::close(socket);
    return true;
}

}  // namespace app::web

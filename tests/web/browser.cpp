#include "browser.h"

#include <arpa/inet.h>
#include <sys/socket.h>
#include <unistd.h>

#include <filesystem>

#include "support/program_folder.h"

namespace test {

app::web::PageServer::Options RunningServer::options(std::vector<std::string> files) {
    app::web::PageServer::Options options;
    options.sessions.program = (programFolder() / "kzdraw").string();
    options.sessions.files = std::move(files);
    options.sessions.most = 2;
    options.sessions.grace = std::chrono::milliseconds(0);
    options.limits.threads = 16;
    options.limits.bodyBytes = 1 << 20;
    return options;
}

RunningServer::RunningServer(const app::web::PageServer::Options& options)
    : m_server(std::make_unique<app::web::PageServer>(options)), m_thread([this] { m_server->run(); }) {
    waitUntil([this] { return m_server->isRunning(); });
}

RunningServer::~RunningServer() {
    m_server->stop();
    m_thread.join();
}

Tab::Tab(RunningServer& server) : m_server(server), m_client("127.0.0.1", server->port()) {}

Tab::~Tab() {
    leave();
}

httplib::Headers Tab::headers() const {
    const std::string port = std::to_string(m_server->port());
    return {{"Cookie", "other=1; kzdraw_" + port + "=" + m_server->secret()},
            {"Origin", "http://127.0.0.1:" + port}};
}

httplib::Result Tab::get(const std::string& path) {
    return m_client.Get(path, headers());
}

httplib::Result Tab::post(const std::string& path, const std::string& body, const char* type) {
    return m_client.Post(path, headers(), body, type);
}

void Tab::start() {
    const auto answer = post("/sessions", "{}");
    ASSERT_TRUE(answer);
    ASSERT_EQ(answer->status, 200) << answer->body;
    m_session = Json::parse(answer->body)["session"];
    m_listener = std::thread([this] { listen(); });
    ASSERT_TRUE(waitForEvent(":"));
}

void Tab::listen() {
    httplib::Client client("127.0.0.1", m_server->port());
    client.Get(path("events"), headers(), [this](const char* bytes, std::size_t size) {
        const std::lock_guard lock(m_mutex);
        m_events.append(bytes, size);
        m_changed.notify_all();
        return !m_left;
    });
    const std::lock_guard lock(m_mutex);
    m_left = true;
    m_changed.notify_all();
}

void Tab::leave() {
    if (!m_listener.joinable()) return;
    {
        const std::lock_guard lock(m_mutex);
        m_left = true;
    }
    m_listener.join();
}

bool Tab::waitForEvent(const std::string& text) {
    std::unique_lock lock(m_mutex);
    m_changed.wait(lock, [&] { return m_left || m_events.find(text) != std::string::npos; });
    return m_events.find(text) != std::string::npos;
}

Json Tab::run(const std::vector<std::string>& lines) {
    const auto answer = post(path("lines"), Json{{"lines", lines}}.dump());
    if (!answer || answer->status != 200) {
        ADD_FAILURE() << (answer ? answer->body : "no answer");
        return nullptr;
    }
    return Json::parse(answer->body)["answers"];
}

RawConnection::RawConnection(int port) : m_socket(::socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0)) {
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_port = htons(static_cast<std::uint16_t>(port));
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    EXPECT_EQ(::connect(m_socket, reinterpret_cast<const sockaddr*>(&address), sizeof address), 0);
}

RawConnection::~RawConnection() {
    ::close(m_socket);
}

bool RawConnection::send(const std::string& bytes) {
    return ::send(m_socket, bytes.data(), bytes.size(), MSG_NOSIGNAL) == static_cast<ssize_t>(bytes.size());
}

std::string RawConnection::readAll() {
    std::string all;
    char bytes[4096];
    for (ssize_t size = 0; (size = ::recv(m_socket, bytes, sizeof bytes, 0)) > 0;)
        all.append(bytes, static_cast<std::size_t>(size));
    return all;
}

void RawConnection::abort() {
    const linger atOnce{1, 0};
    ::setsockopt(m_socket, SOL_SOCKET, SO_LINGER, &atOnce, sizeof atOnce);
    ::close(m_socket);
    m_socket = -1;
}

std::size_t openFiles() {
    const std::filesystem::directory_iterator files("/proc/self/fd");
    return static_cast<std::size_t>(std::distance(begin(files), end(files)));
}

}  // namespace test

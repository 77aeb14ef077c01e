#include "app/web/session_main.h"

#include <sys/socket.h>
#include <unistd.h>

#include <thread>

#include "app/script/interpreter.h"
#include "app/web/page_lines.h"

namespace app::web {

namespace {

// Reads what the page asks for, until the page is gone.
class Reader {
public:
    Reader(int socket, PageLines& lines) : m_socket(socket), m_thread([this, &lines] { read(lines); }) {}
    ~Reader() {
        ::shutdown(m_socket, SHUT_RDWR);
        m_thread.join();
    }
    Reader(const Reader&) = delete;
    Reader& operator=(const Reader&) = delete;

private:
    void read(PageLines& lines) {
        try {
            for (Frame frame; receiveFrame(m_socket, frame);) lines.take(std::move(frame));
        } catch (const std::bad_alloc&) {  // the session ends as if the page were gone
        }
        lines.end();
    }

    int m_socket;
    std::thread m_thread;
};

}  // namespace

int runSession(int socket, std::vector<std::string> files) {
    std::mutex sending;
    const auto send = [&sending, socket](const Frame& frame) {
        const std::lock_guard lock(sending);
        sendFrame(socket, frame);
    };
    try {
        Session session;
        PageLines lines(session, std::move(files), send);
        const Reader reader(socket, lines);
        interpret(session, lines);
    } catch (const Failure& failure) {
        send({0, '!', failure.reason});
        return 2;
    }
    return 0;
}

}  // namespace app::web

#include "app/web/frame.h"

#include <sys/socket.h>
#include <sys/uio.h>

#include <array>
#include <cerrno>
#include <cstring>

namespace app::web {

namespace {

constexpr std::size_t kHeadSize = 9;
constexpr std::size_t kMostPayload = std::size_t{1} << 30;

bool sendAll(int socket, const char* bytes, std::size_t size) {
    while (size > 0) {
        const ssize_t sent = ::send(socket, bytes, size, MSG_NOSIGNAL);
        if (sent < 0 && errno == EINTR) continue;
        if (sent <= 0) return false;
        bytes += sent;
        size -= static_cast<std::size_t>(sent);
    }
    return true;
}

bool receiveAll(int socket, char* bytes, std::size_t size) {
    while (size > 0) {
        const ssize_t received = ::recv(socket, bytes, size, 0);
        if (received < 0 && errno == EINTR) continue;
        if (received <= 0) return false;
        bytes += received;
        size -= static_cast<std::size_t>(received);
    }
    return true;
}

}  // namespace

bool sendFrame(int socket, const Frame& frame) {
    if (frame.payload.size() > kMostPayload) return false;
    const auto length = static_cast<std::uint32_t>(frame.payload.size());
    std::array<char, kHeadSize> head;
    std::memcpy(head.data(), &length, 4);
    std::memcpy(head.data() + 4, &frame.call, 4);
    head[8] = frame.kind;
    return sendAll(socket, head.data(), head.size()) && sendAll(socket, frame.payload.data(), length);
}

bool receiveFrame(int socket, Frame& frame) {
    std::array<char, kHeadSize> head;
    if (!receiveAll(socket, head.data(), head.size())) return false;
    std::uint32_t length = 0;
    std::memcpy(&length, head.data(), 4);
    std::memcpy(&frame.call, head.data() + 4, 4);
    frame.kind = head[8];
    if (length > kMostPayload) return false;
    frame.payload.resize(length);
    return receiveAll(socket, frame.payload.data(), length);
}

}  // namespace app::web

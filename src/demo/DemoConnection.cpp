#include "demo/DemoConnection.h"

#include <poll.h>
#include <sys/socket.h>
#include <unistd.h>

#include <array>

namespace lumora {

DemoConnection::DemoConnection(int socket, int stop, std::chrono::milliseconds patience)
    : m_socket(socket)
    , m_stop(stop)
    , m_patience(patience) {}

DemoConnection::~DemoConnection() {
    ::close(m_socket);
}

bool DemoConnection::pause(std::chrono::milliseconds duration) const {
    pollfd stop{.fd = m_stop, .events = POLLIN, .revents = 0};
    return ::poll(&stop, 1, static_cast<int>(duration.count())) == 0;
}

bool DemoConnection::await(short events) const {
    std::array<pollfd, 2> polled{
        pollfd{.fd = m_socket, .events = events, .revents = 0},
        pollfd{.fd = m_stop, .events = POLLIN, .revents = 0}};
    const int ready = ::poll(polled.data(), polled.size(), static_cast<int>(m_patience.count()));
    return ready > 0 && polled[1].revents == 0;
}

QByteArray DemoConnection::read() {
    std::array<char, 65536> buffer;
    if (!await(POLLIN))
        return {};
    const auto received = ::recv(m_socket, buffer.data(), buffer.size(), 0);
    return received > 0 ? QByteArray(buffer.data(), received) : QByteArray();
}

bool DemoConnection::write(const QByteArray& bytes) {
    for (qsizetype sent = 0; sent < bytes.size();) {
        if (!await(POLLOUT))
            return false;
        const auto count =
            ::send(m_socket, bytes.data() + sent, size_t(bytes.size() - sent), MSG_NOSIGNAL);
        if (count < 0)
            return false;
        sent += count;
    }
    return true;
}

void DemoConnection::finish() {
    ::shutdown(m_socket, SHUT_WR);
    while (!read().isEmpty()) {
    }
}

} // namespace lumora

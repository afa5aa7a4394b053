#include "demo/DemoConnection.h"

#include <poll.h>
#include <sys/socket.h>

#include <algorithm>

namespace lumora {

DemoConnection::DemoConnection(int socket, int stop, std::chrono::milliseconds patience)
    : m_socket(socket)
    , m_stop(stop)
    , m_patience(patience) {}

void DemoConnection::hangUp() {
    m_hungUp = true;
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

bool DemoConnection::is_readable() const {
    return m_bufferUsed < m_bufferSize || await(POLLIN);
}

bool DemoConnection::is_writable() const {
    return await(POLLOUT);
}

ssize_t DemoConnection::read(char* data, size_t size) {
    if (m_bufferUsed == m_bufferSize) {
        if (!await(POLLIN))
            return -1;
        const auto received = ::recv(m_socket, m_buffer.data(), m_buffer.size(), 0);
        if (received <= 0)
            return received;
        m_bufferUsed = 0;
        m_bufferSize = static_cast<size_t>(received);
    }
    const auto taken = std::min(size, m_bufferSize - m_bufferUsed);
    std::copy_n(m_buffer.data() + m_bufferUsed, taken, data);
    m_bufferUsed += taken;
    return static_cast<ssize_t>(taken);
}

ssize_t DemoConnection::write(const char* data, size_t size) {
    if (m_hungUp || !await(POLLOUT))
        return -1;
    return ::send(m_socket, data, size, MSG_NOSIGNAL | MSG_DONTWAIT);
}

// The service listens on the loopback address alone and never asks who is there.
void DemoConnection::get_remote_ip_and_port(std::string& ip, int& port) const {
    ip.clear();
    port = 0;
}

void DemoConnection::get_local_ip_and_port(std::string& ip, int& port) const {
    ip.clear();
    port = 0;
}

int DemoConnection::socket() const {
    return m_socket;
}

} // namespace lumora

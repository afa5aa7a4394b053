#include "companion/server/LoopbackServer.h"

#include "companion/server/LoopbackConnection.h"

#include <arpa/inet.h>
#include <netinet/in.h>
#include <sys/socket.h>
#include <unistd.h>

#include <cerrno>
#include <utility>

using namespace Qt::Literals::StringLiterals;

namespace lumora::companion {

namespace {

sockaddr_in loopbackAddress(quint16 port) {
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_port = htons(port);
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    return address;
}

/// The socket, or -1 with errno.
int listenOn(quint16 port) {
    const int socket = ::socket(AF_INET, SOCK_STREAM | SOCK_NONBLOCK | SOCK_CLOEXEC, 0);
    if (socket < 0)
        return -1;
    const int yes = 1; // or a restart would have to wait for the connections of before
    ::setsockopt(socket, SOL_SOCKET, SO_REUSEADDR, &yes, sizeof yes);
    const sockaddr_in address = loopbackAddress(port);
    if (::bind(socket, reinterpret_cast<const sockaddr*>(&address), sizeof address) == 0 &&
        ::listen(socket, SOMAXCONN) == 0)
        return socket;
    const int error = errno;
    ::close(socket);
    errno = error;
    return -1;
}

quint16 portOf(int socket) {
    sockaddr_in address{};
    socklen_t size = sizeof address;
    ::getsockname(socket, reinterpret_cast<sockaddr*>(&address), &size);
    return ntohs(address.sin_port);
}

} // namespace

LoopbackServer::LoopbackServer(QByteArray token, ServiceHandlers handlers, Patience patience)
    : m_token(std::move(token))
    , m_handlers(std::move(handlers))
    , m_patience(patience) {}

LoopbackServer::~LoopbackServer() {
    m_incoming.reset();
    m_connections.clear();
    if (m_socket >= 0)
        ::close(m_socket);
}

tl::expected<quint16, QString> LoopbackServer::start(quint16 port) {
    m_socket = listenOn(port);
    if (m_socket < 0) {
        const bool isTaken = errno == EADDRINUSE;
        const QString reason = isTaken ? u"already in use"_s : u"not to be had"_s;
        return tl::unexpected(u"port %1 is %2"_s.arg(port).arg(reason));
    }
    m_incoming = std::make_unique<QSocketNotifier>(m_socket, QSocketNotifier::Read);
    connect(m_incoming.get(), &QSocketNotifier::activated, this, &LoopbackServer::accept);
    return portOf(m_socket);
}

void LoopbackServer::accept() {
    const int socket = ::accept4(m_socket, nullptr, nullptr, SOCK_NONBLOCK | SOCK_CLOEXEC);
    if (socket < 0)
        return;
    m_connections[socket] = std::make_unique<LoopbackConnection>(socket, *this);
    m_incoming->setEnabled(m_connections.size() < mostConnections);
}

void LoopbackServer::drop(int socket) {
    m_connections.erase(socket);
    m_incoming->setEnabled(true);
}

} // namespace lumora::companion

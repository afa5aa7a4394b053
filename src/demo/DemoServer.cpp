#include "demo/DemoServer.h"

#include "demo/DemoConnection.h"
#include "demo/DemoHttp.h"
#include "demo/DemoService.h"

#include <arpa/inet.h>
#include <fcntl.h>
#include <netinet/in.h>
#include <poll.h>
#include <sys/socket.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <future>
#include <thread>
#include <utility>
#include <vector>

namespace lumora {

using namespace Qt::Literals::StringLiterals;
using namespace std::chrono_literals;

namespace {

constexpr auto kPatience = 10s;

/// A socket that listens on the loopback address, or -1 and the reason in errno.
int listenOn(quint16 port) {
    const int listening = ::socket(AF_INET, SOCK_STREAM | SOCK_NONBLOCK | SOCK_CLOEXEC, 0);
    // Takes a port at once that was in use a moment ago, and not one that is.
    const int yes = 1;
    ::setsockopt(listening, SOL_SOCKET, SO_REUSEADDR, &yes, sizeof yes);
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_port = htons(port);
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    if (::bind(listening, reinterpret_cast<const sockaddr*>(&address), sizeof address) == 0 &&
        ::listen(listening, SOMAXCONN) == 0)
        return listening;
    const int reason = errno;
    ::close(listening);
    errno = reason;
    return -1;
}

quint16 portOf(int listening) {
    sockaddr_in address{};
    socklen_t size = sizeof address;
    ::getsockname(listening, reinterpret_cast<sockaddr*>(&address), &size);
    return ntohs(address.sin_port);
}

} // namespace

/// One thread accepts connections, and each of these has one of its own for its one request.
class DemoServer::Listener {
public:
    explicit Listener(DemoService& service)
        : m_service(service) {
        if (::pipe2(m_stopPipe.data(), O_CLOEXEC) != 0)
            qFatal("No pipe: errno %d", errno);
    }

    ~Listener() {
        halt();
        ::close(m_stopPipe[0]);
    }

    Listener(const Listener&) = delete;
    Listener& operator=(const Listener&) = delete;

    /// Takes over the socket, which listens.
    void run(int listening) {
        m_thread = std::thread([this, listening] {
            acceptFrom(listening);
            ::close(listening);
        });
    }

    void halt() {
        if (m_stopPipe[1] == -1)
            return;
        // The waits of every connection see the closed pipe.
        ::close(std::exchange(m_stopPipe[1], -1));
        if (m_thread.joinable())
            m_thread.join();
    }

private:
    /// Returns when the service stops, and every connection is closed.
    void acceptFrom(int listening) {
        std::vector<std::future<void>> served;
        std::array<pollfd, 2> polled{
            pollfd{.fd = listening, .events = POLLIN, .revents = 0},
            pollfd{.fd = m_stopPipe[0], .events = POLLIN, .revents = 0}};
        while (true) {
            const int ready = ::poll(polled.data(), polled.size(), -1);
            if (ready < 0)
                continue;
            if (polled[1].revents != 0)
                return;
            std::erase_if(served, [](const std::future<void>& connection) {
                return connection.wait_for(0s) == std::future_status::ready;
            });
            const int socket = ::accept4(listening, nullptr, nullptr, SOCK_NONBLOCK | SOCK_CLOEXEC);
            if (socket >= 0)
                served.push_back(std::async(std::launch::async, [this, socket] { serve(socket); }));
        }
    }

    void serve(int socket) {
        DemoConnection connection(socket, m_stopPipe[0], kPatience);
        QByteArray received;
        auto request = demoRequestFrom(received);
        while (request && !*request) {
            const auto more = connection.read();
            if (more.isEmpty())
                return;
            received += more;
            request = demoRequestFrom(received);
        }
        const auto answer = request ? m_service.answer(**request) : demoRefusal(request.error());
        if (answer.hangUp || !connection.pause(answer.delay))
            return;
        const bool withBody = !request || (*request)->method != "HEAD";
        if (connection.write(demoResponse(answer, withBody)))
            connection.finish();
    }

    DemoService& m_service;
    std::array<int, 2> m_stopPipe{-1, -1};
    std::thread m_thread;
};

DemoServer::DemoServer(DemoService& service)
    : m_listener(std::make_unique<Listener>(service)) {}

DemoServer::~DemoServer() = default;

tl::expected<quint16, QString> DemoServer::start(quint16 port) {
    const int listening = listenOn(port);
    if (listening < 0) {
        const auto reason = errno == EACCES ? u"not permitted"_s : u"already in use"_s;
        return tl::unexpected(u"Port %1 is %2"_s.arg(port).arg(reason));
    }
    const auto bound = portOf(listening);
    m_listener->run(listening);
    return bound;
}

void DemoServer::stop() {
    m_listener->halt();
}

} // namespace lumora

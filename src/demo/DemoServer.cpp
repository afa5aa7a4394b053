#include "demo/DemoServer.h"

#include "demo/DemoConnection.h"
#include "demo/DemoService.h"

#include <fcntl.h>
#include <sys/socket.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <future>
#include <thread>
#include <utility>

namespace lumora {

using namespace Qt::Literals::StringLiterals;
using namespace std::chrono_literals;

namespace {

constexpr auto kHost = "127.0.0.1";
constexpr auto kPatience = 10s;
constexpr size_t kWorkers = 8;
constexpr size_t kLargestBody = size_t(1024) * 1024;

/// The connection that this thread works on: the library's handlers are not told.
thread_local DemoConnection* t_connection = nullptr;

/// Unlike the library's own choice this does not share the port with another listener, so that a
/// port in use is noticed.
void setSocketOptions(int socket) {
    const int yes = 1;
    ::setsockopt(socket, SOL_SOCKET, SO_REUSEADDR, &yes, sizeof yes);
}

} // namespace

/// The HTTP library's server, one request per connection.
class DemoServer::Listener : private httplib::Server {
public:
    explicit Listener(DemoService& service)
        : m_service(service) {
        if (::pipe2(m_stopPipe.data(), O_CLOEXEC) != 0)
            qFatal("No pipe: errno %d", errno);
        set_socket_options(setSocketOptions);
        set_payload_max_length(kLargestBody);
        const auto handler = [this](const auto& request, auto& response) {
            serve(request, response);
        };
        const std::string everything = ".*";
        Get(everything, handler).Post(everything, handler).Put(everything, handler);
        Patch(everything, handler).Delete(everything, handler).Options(everything, handler);
        set_error_handler([](const httplib::Request&, httplib::Response& response) {
            if (response.body.empty())
                response.set_content(R"({"error":"Not understood"})", "application/json");
        });
    }

    ~Listener() override {
        halt();
        ::close(m_stopPipe[0]);
    }

    /// The port, or -1.
    int bindTo(quint16 port) {
        int bound = -1;
        if (port == 0)
            bound = bind_to_any_port(kHost);
        else if (bind_to_port(kHost, port))
            bound = port;
        // The library's queue of five loses connections when many come at once.
        if (bound > 0 && ::listen(svr_sock_, SOMAXCONN) != 0)
            return -1;
        return bound;
    }

    /// Returns once the listener runs: before that, the library ignores being told to stop.
    void run() {
        std::promise<void> running;
        new_task_queue = [&running] {
            running.set_value();
            return new httplib::ThreadPool(kWorkers);
        };
        m_thread = std::thread([this] { listen_after_bind(); });
        running.get_future().wait();
    }

    void halt() {
        if (m_stopPipe[1] == -1)
            return;
        // The waits of every connection see the closed pipe.
        ::close(std::exchange(m_stopPipe[1], -1));
        httplib::Server::stop();
        if (m_thread.joinable())
            m_thread.join();
    }

private:
    bool process_and_close_socket(int socket) override {
        DemoConnection connection(socket, m_stopPipe[0], kPatience);
        t_connection = &connection;
        bool closed = false;
        const bool served = process_request(connection, true, closed, nullptr);
        t_connection = nullptr;
        ::shutdown(socket, SHUT_RDWR);
        ::close(socket);
        return served;
    }

    void serve(const httplib::Request& request, httplib::Response& response) {
        const auto answer = m_service.answer({
            .method = QByteArray::fromStdString(request.method),
            .path = QByteArray::fromStdString(request.path),
            .token = QByteArray::fromStdString(request.get_header_value("X-Api-Key")),
            .body = QByteArray::fromStdString(request.body),
        });
        if (answer.hangUp || !t_connection->pause(answer.delay))
            t_connection->hangUp();
        response.status = answer.status;
        if (!answer.allow.isEmpty())
            response.set_header("Allow", answer.allow.toStdString());
        response.set_content(answer.body.toStdString(), answer.contentType.toStdString());
    }

    DemoService& m_service;
    std::array<int, 2> m_stopPipe{-1, -1};
    std::thread m_thread;
};

DemoServer::DemoServer(DemoService& service)
    : m_listener(std::make_unique<Listener>(service)) {}

DemoServer::~DemoServer() = default;

tl::expected<quint16, QString> DemoServer::start(quint16 port) {
    errno = 0;
    const int bound = m_listener->bindTo(port);
    if (bound < 0) {
        const auto reason = errno == EACCES ? u"not permitted"_s : u"already in use"_s;
        return tl::unexpected(u"Port %1 is %2"_s.arg(port).arg(reason));
    }
    m_listener->run();
    return static_cast<quint16>(bound);
}

void DemoServer::stop() {
    m_listener->halt();
}

} // namespace lumora

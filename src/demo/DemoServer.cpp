#include "demo/DemoServer.h"

#include "demo/DemoService.h"

#include <httplib.h>
#include <sys/socket.h>

#include <cerrno>
#include <condition_variable>
#include <future>
#include <mutex>
#include <thread>

namespace lumora {

using namespace Qt::Literals::StringLiterals;

namespace {

constexpr auto kHost = "127.0.0.1";
constexpr size_t kWorkers = 8;
constexpr size_t kLargestBody = size_t(1024) * 1024;

/// Unlike the library's own choice this does not share the port with another listener, so that a
/// port in use is noticed.
void setSocketOptions(int socket) {
    const int yes = 1;
    ::setsockopt(socket, SOL_SOCKET, SO_REUSEADDR, &yes, sizeof yes);
}

} // namespace

/// The HTTP library's server, one request per connection.
class DemoServer::Listener {
public:
    Listener(DemoService& service, std::chrono::seconds patience)
        : m_service(service) {
        m_server.set_socket_options(setSocketOptions);
        m_server.set_payload_max_length(kLargestBody);
        m_server.set_keep_alive_max_count(1);
        m_server.set_keep_alive_timeout(patience.count());
        m_server.set_read_timeout(patience);
        const auto handler = [this](const auto& request, auto& response) {
            serve(request, response);
        };
        const std::string everything = ".*";
        m_server.Get(everything, handler).Post(everything, handler).Put(everything, handler);
        m_server.Patch(everything, handler).Delete(everything, handler);
        m_server.Options(everything, handler);
        m_server.set_error_handler([](const httplib::Request&, httplib::Response& response) {
            if (response.body.empty())
                response.set_content(R"({"error":"Not understood"})", "application/json");
        });
    }

    ~Listener() { halt(); }

    Listener(const Listener&) = delete;
    Listener& operator=(const Listener&) = delete;

    /// The port, or -1.
    int bindTo(quint16 port) {
        if (port == 0)
            return m_server.bind_to_any_port(kHost);
        return m_server.bind_to_port(kHost, port) ? port : -1;
    }

    /// Returns once the server runs: before that, it ignores being told to stop.
    void run() {
        std::promise<void> running;
        m_server.new_task_queue = [&running] {
            running.set_value();
            return new httplib::ThreadPool(kWorkers);
        };
        m_thread = std::thread([this] { m_server.listen_after_bind(); });
        running.get_future().wait();
    }

    void halt() {
        {
            const std::lock_guard lock(m_mutex);
            m_stopping = true;
        }
        m_stopped.notify_all();
        m_server.stop();
        if (m_thread.joinable())
            m_thread.join();
    }

private:
    void serve(const httplib::Request& request, httplib::Response& response) {
        const auto answer = m_service.answer({
            .method = QByteArray::fromStdString(request.method),
            .path = QByteArray::fromStdString(request.path),
            .token = QByteArray::fromStdString(request.get_header_value("X-Api-Key")),
            .body = QByteArray::fromStdString(request.body),
        });
        response.status = answer.status;
        if (!answer.allow.isEmpty())
            response.set_header("Allow", answer.allow.toStdString());
        const std::string contentType = answer.contentType.toStdString();
        if (answer.breakOff || !pause(answer.delay))
            // A body that never comes: the library closes the connection behind the headers.
            response.set_content_provider(
                1, contentType, [](size_t, size_t, httplib::DataSink&) { return false; });
        else
            response.set_content(answer.body.toStdString(), contentType);
    }

    /// Waits for `duration`; false: the server stops.
    bool pause(std::chrono::milliseconds duration) {
        std::unique_lock lock(m_mutex);
        return !m_stopped.wait_for(lock, duration, [this] { return m_stopping; });
    }

    DemoService& m_service;
    httplib::Server m_server;
    std::thread m_thread;
    std::mutex m_mutex;
    std::condition_variable m_stopped;
    bool m_stopping = false;
};

DemoServer::DemoServer(DemoService& service, std::chrono::seconds patience)
    : m_listener(std::make_unique<Listener>(service, patience)) {}

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

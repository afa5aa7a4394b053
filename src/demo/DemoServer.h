#pragma once

#include <QString>

#include <tl/expected.hpp>

#include <chrono>
#include <memory>

namespace lumora {

class DemoService;

/// Serves a DemoService over HTTP on the loopback address, on threads of its own. Destroying it
/// stops it.
class DemoServer {
public:
    /// `service` must outlive the server. A client that sends nothing for `patience` is given up.
    explicit DemoServer(
        DemoService& service, std::chrono::seconds patience = std::chrono::seconds(10));
    ~DemoServer();

    /// Starts listening on 127.0.0.1. `port` 0 takes a free one. Gives the port, which accepts
    /// connections from then on, or one sentence on why not. To be called once.
    tl::expected<quint16, QString> start(quint16 port);

    /// Stops, also in the middle of an answer; a client that has not said all of its request yet is
    /// waited for as long as the patience lasts.
    void stop();

private:
    class Listener;
    std::unique_ptr<Listener> m_listener;
};

} // namespace lumora

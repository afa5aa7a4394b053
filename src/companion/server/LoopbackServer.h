#pragma once

#include "companion/server/Admission.h"

#include <QObject>
#include <QSocketNotifier>

#include <tl/expected.hpp>

#include <chrono>
#include <functional>
#include <map>
#include <memory>

namespace lumora::companion {

class LoopbackConnection;

/// What the server asks for when somebody may have it.
struct ServiceHandlers {
    /// Hands over the briefing as it is now, once, at any time, from this thread; null while there
    /// is none yet.
    std::function<void(std::function<void(std::shared_ptr<const QByteArray>)>)> briefing;
    /// Does what an action wants and answers once, at any time, from this thread.
    std::function<void(ServiceAction, std::function<void(HttpAnswer)>)> act;
};

/// Serves HTTP to this very computer, on 127.0.0.1, one request a connection, from the event loop
/// of its thread. Whoever is slow, or sends more than is taken, loses the connection, and holds
/// nobody else up.
class LoopbackServer final : public QObject {
    Q_OBJECT

public:
    /// How many connections there may be at a time; further ones wait to be accepted.
    static constexpr std::size_t mostConnections = 32;

    struct Patience {
        std::chrono::milliseconds request{10'000}; ///< for the whole of a request to come
        std::chrono::milliseconds answer{20'000};  ///< for the answer to be made and taken
    };

    LoopbackServer(QByteArray token, ServiceHandlers handlers)
        : LoopbackServer(std::move(token), std::move(handlers), Patience{}) {}

    LoopbackServer(QByteArray token, ServiceHandlers handlers, Patience patience);
    ~LoopbackServer() override;

    /// Starts listening; port 0 takes a free one. The port, or one line for people on why not. To
    /// be called once.
    [[nodiscard]] tl::expected<quint16, QString> start(quint16 port);

private:
    friend class LoopbackConnection;

    void accept();
    void drop(int socket);

    Admission admitted(const HttpRequest& request) const { return admit(request, m_token); }

    const QByteArray m_token;
    const ServiceHandlers m_handlers;
    const Patience m_patience;
    int m_socket = -1;
    std::unique_ptr<QSocketNotifier> m_incoming;
    std::map<int, std::unique_ptr<LoopbackConnection>> m_connections;
};

} // namespace lumora::companion

#pragma once

#include "companion/server/LoopbackServer.h"

#include <QObject>
#include <QSocketNotifier>
#include <QTimer>

namespace lumora::companion {

/// One connection to the server: a request, its answer, and the end.
class LoopbackConnection final : public QObject {
    Q_OBJECT

public:
    /// Takes over the socket. The server drops it when it is done.
    LoopbackConnection(int socket, LoopbackServer& server);
    ~LoopbackConnection() override;

private:
    void receive();
    void handle(const HttpRequest& request);
    void answer(const HttpAnswer& answer);
    void send();
    void linger();
    void end();

    const int m_socket;
    LoopbackServer& m_server;
    QSocketNotifier m_readable;
    QSocketNotifier m_writable;
    QTimer m_limit;
    QByteArray m_received;
    QByteArray m_toSend;
    qsizetype m_sent = 0;
    bool m_isAnswered = false;
    bool m_isEnding = false;
};

} // namespace lumora::companion

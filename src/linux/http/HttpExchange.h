#pragma once

#include "platform/Completion.h"
#include "platform/HttpTransport.h"

#include <QNetworkReply>
#include <QSslConfiguration>
#include <QTimer>

#include <chrono>
#include <memory>

class QNetworkAccessManager;

namespace lumora {

/// How long an exchange may take and how much may come back.
struct HttpLimits {
    std::chrono::milliseconds inactivity{15'000}; ///< without a byte in either direction
    std::chrono::milliseconds total{30'000};      ///< for the whole exchange, redirects included
    qint64 bodyBytes = qint64{16} * 1024 * 1024;  ///< of a body, decompressed
};

/// One exchange: a request, the redirects that it leads through, and the answer. It owns the reply
/// of the hop under way and the deadline of the whole.
class HttpExchange final : public QObject {
public:
    /// `trust` absent: what the system trusts. The manager must outlive the exchange, or the
    /// exchange be closed before the manager goes.
    HttpExchange(
        QNetworkAccessManager& manager, const HttpLimits& limits,
        std::optional<QSslConfiguration> trust, HttpRequest request);

    /// Sends the request. To be called once.
    void start();

    /// Ends the exchange with an error, unless it has ended.
    void close();

    /// Delivered from the event loop, never from within the network code, so that whoever waits
    /// for it may destroy everything.
    Completion<HttpOutcome>& outcome() { return m_outcome; }

private:
    struct DeleteLater {
        void operator()(QObject* object) const { object->deleteLater(); }
    };

    void sendHop();
    void readBody();
    void finishHop();
    void dropReply();
    void end(HttpOutcome outcome);
    void deliver();

    QNetworkAccessManager& m_manager;
    const HttpLimits m_limits;
    const std::optional<QSslConfiguration> m_trust;
    HttpRequest m_request; ///< of the hop under way
    int m_hops = 0;        ///< redirects followed
    QByteArray m_body;     ///< what has come of the hop's body
    std::unique_ptr<QNetworkReply, DeleteLater> m_reply;
    QTimer m_deadline;
    std::optional<HttpOutcome> m_ended; ///< set once the exchange is over, delivered or not
    Completion<HttpOutcome> m_outcome;
};

} // namespace lumora

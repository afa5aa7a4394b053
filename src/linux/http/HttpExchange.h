#pragma once

#include "linux/http/HttpHop.h"
#include "platform/Completion.h"

#include <QObject>
#include <QTimer>

#include <memory>
#include <optional>

namespace lumora {

/// One exchange: a request, the redirects that it leads through, and the answer. It owns the hop
/// under way and the deadline of the whole.
class HttpExchange final : public QObject {
public:
    /// `loop` must outlive the exchange, or the exchange be closed before the loop goes.
    HttpExchange(CurlLoop& loop, const HttpLimits& limits, HttpRequest request);

    /// Sends the request. To be called once.
    void start();

    /// Ends the exchange with an error, unless it has ended.
    void close();

    /// Delivered from the event loop, never from within the network code, so that whoever waits
    /// for it may destroy everything.
    Completion<HttpOutcome>& outcome() { return m_outcome; }

private:
    void sendHop();
    void finishHop(const HttpOutcome& outcome, const QByteArray& location);
    void end(HttpOutcome outcome);
    void deliver();

    CurlLoop& m_loop;
    const HttpLimits m_limits;
    HttpRequest m_request; ///< of the hop under way
    int m_hops = 0;        ///< redirects followed
    std::unique_ptr<HttpHop> m_hop;
    QTimer m_deadline;
    std::optional<HttpOutcome> m_ended; ///< set once the exchange is over, delivered or not
    Completion<HttpOutcome> m_outcome;
};

} // namespace lumora

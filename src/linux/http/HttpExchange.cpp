#include "linux/http/HttpExchange.h"

#include "linux/http/RedirectRule.h"
#include "linux/http/TransferOutcome.h"

using namespace Qt::Literals::StringLiterals;

namespace lumora {

HttpExchange::HttpExchange(CurlLoop& loop, const HttpLimits& limits, HttpRequest request)
    : m_loop(loop)
    , m_limits(limits)
    , m_request(std::move(request)) {
    m_deadline.setSingleShot(true);
    m_deadline.setTimerType(Qt::PreciseTimer);
    m_deadline.setInterval(m_limits.total);
    connect(&m_deadline, &QTimer::timeout, this, [this] { end(timedOut()); });
}

void HttpExchange::start() {
    m_deadline.start();
    sendHop();
}

void HttpExchange::close() {
    if (!m_ended)
        end(failed(u"The connection was shut down"_s));
    deliver();
}

void HttpExchange::sendHop() {
    m_hop = std::make_unique<HttpHop>(
        m_loop, m_limits, m_request,
        [this](const HttpOutcome& outcome, const QByteArray& location) {
            finishHop(outcome, location);
        });
    if (const auto sent = m_hop->start(); !sent)
        end(refused(sent.error()));
}

void HttpExchange::finishHop(const HttpOutcome& outcome, const QByteArray& location) {
    if (outcome) {
        if (auto next = followRedirect(m_request, outcome->status, location, m_hops)) {
            m_request = *std::move(next);
            ++m_hops;
            return sendHop();
        }
    }
    end(outcome);
}

void HttpExchange::end(HttpOutcome outcome) {
    m_ended = std::move(outcome);
    m_deadline.stop();
    m_hop.reset(); // it takes the connection down with it
    QMetaObject::invokeMethod(this, &HttpExchange::deliver, Qt::QueuedConnection);
}

void HttpExchange::deliver() {
    m_outcome.complete(*m_ended); // this object may be gone on return
}

} // namespace lumora

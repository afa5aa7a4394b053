#include "linux/http/HttpExchange.h"

#include "linux/http/HeaderValue.h"
#include "linux/http/OneShotUpload.h"
#include "linux/http/RedirectRule.h"
#include "linux/http/ReplyOutcome.h"

#include <QNetworkAccessManager>
#include <QNetworkRequest>

using namespace Qt::Literals::StringLiterals;

namespace lumora {

namespace {

constexpr qint64 readBufferBytes = qint64{256} * 1024;

// Nothing of one exchange is kept for the next: no cookies, no credentials, no connection. A kept
// connection may have died unnoticed, in a suspend for one.
void isolate(QNetworkRequest& request) {
    request.setAttribute(QNetworkRequest::CookieLoadControlAttribute, QNetworkRequest::Manual);
    request.setAttribute(QNetworkRequest::CookieSaveControlAttribute, QNetworkRequest::Manual);
    request.setAttribute(QNetworkRequest::AuthenticationReuseAttribute, QNetworkRequest::Manual);
    request.setAttribute(QNetworkRequest::CacheSaveControlAttribute, false);
    request.setRawHeader("Connection", "close");
}

// The error is for the user: a header would break out of its line.
tl::expected<QNetworkRequest, QString>
networkRequest(const HttpRequest& request, std::chrono::milliseconds inactivity) {
    QNetworkRequest result(request.url);
    isolate(result);
    result.setAttribute(
        QNetworkRequest::RedirectPolicyAttribute, QNetworkRequest::ManualRedirectPolicy);
    // HTTP/2 has rules of its own for repeating requests.
    result.setAttribute(QNetworkRequest::Http2AllowedAttribute, false);
    // The body is bounded as it is read, compressed or not.
    result.setDecompressedSafetyCheckThreshold(-1);
    result.setTransferTimeout(static_cast<int>(inactivity.count()));
    result.setHeader(QNetworkRequest::UserAgentHeader, u"Lumora/" LUMORA_VERSION ""_s);
    for (const auto& [name, value] : request.headers) {
        const auto line = headerValue(value);
        if (!line) {
            return tl::unexpected(
                u"The header %1 contains a line break"_s.arg(QString::fromLatin1(name)));
        }
        result.setRawHeader(name, *line);
    }
    return result;
}

bool isHttp(const QUrl& url) {
    return (url.scheme() == u"https"_s || url.scheme() == u"http"_s) && !url.host().isEmpty();
}

} // namespace

HttpExchange::HttpExchange(
    QNetworkAccessManager& manager, const HttpLimits& limits,
    std::optional<QSslConfiguration> trust, HttpRequest request)
    : m_manager(manager)
    , m_limits(limits)
    , m_trust(std::move(trust))
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
    if (!isHttp(m_request.url))
        return end(refused(u"The address is no http or https address"_s));
    auto request = networkRequest(m_request, m_limits.inactivity);
    if (!request)
        return end(refused(request.error()));
    if (m_trust)
        request->setSslConfiguration(*m_trust);

    m_body.clear();
    auto* const upload = new OneShotUpload(m_request.body.value_or(QByteArray()));
    m_reply.reset(m_manager.sendCustomRequest(*request, m_request.method, upload));
    upload->setParent(m_reply.get());
    m_reply->setReadBufferSize(readBufferBytes);
    connect(m_reply.get(), &QNetworkReply::metaDataChanged, upload, &OneShotUpload::setAnswered);
    connect(m_reply.get(), &QNetworkReply::readyRead, this, &HttpExchange::readBody);
    connect(m_reply.get(), &QNetworkReply::finished, this, &HttpExchange::finishHop);
}

void HttpExchange::readBody() {
    if (!m_reply->isOpen()) // it failed
        return;
    m_body += m_reply->read(m_limits.bodyBytes + 1 - m_body.size());
    if (m_body.size() > m_limits.bodyBytes) {
        end(tl::unexpected(
            TransportError{TransportError::Kind::BodyTooLarge, u"The answer is too large"_s}));
    }
}

void HttpExchange::finishHop() {
    readBody();
    if (m_ended)
        return;
    const HttpOutcome outcome = outcomeOf(*m_reply, m_body);
    if (outcome) {
        const QByteArray location = m_reply->rawHeader("Location");
        if (auto next = followRedirect(m_request, outcome->status, location, m_hops)) {
            m_request = *std::move(next);
            ++m_hops;
            dropReply();
            return sendHop();
        }
    }
    end(outcome);
}

void HttpExchange::dropReply() {
    if (!m_reply)
        return;
    m_reply->disconnect(this);
    m_reply.reset(); // it takes the connection down with it
}

void HttpExchange::end(HttpOutcome outcome) {
    m_ended = std::move(outcome);
    m_deadline.stop();
    dropReply();
    QMetaObject::invokeMethod(this, &HttpExchange::deliver, Qt::QueuedConnection);
}

void HttpExchange::deliver() {
    m_outcome.complete(*m_ended); // this object may be gone on return
}

} // namespace lumora

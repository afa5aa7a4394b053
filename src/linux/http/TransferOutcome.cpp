#include "linux/http/TransferOutcome.h"

#include <cerrno>
#include <system_error>

using namespace Qt::Literals::StringLiterals;

namespace lumora {

namespace {

const QString connectionClosed = u"Connection closed"_s;

HttpOutcome noHttp() {
    return tl::unexpected(
        TransportError{TransportError::Kind::NotHttp, u"The answer is no HTTP"_s});
}

HttpOutcome closed() {
    return failed(connectionClosed);
}

// "OpenSSL/3.0.19: error:0A00010B:SSL routines::wrong version number" and
// "SSL certificate problem: certificate has expired": what counts stands last.
QString tlsReason(const QString& detail) {
    if (detail.contains(u"unexpected eof"_s)) // which not every version has a word for
        return {};
    if (detail.contains(u"error:"_s))
        return detail.section(u':', -1).trimmed();
    for (const QString& lead : {u"SSL certificate problem: "_s, u"SSL: "_s}) {
        if (detail.startsWith(lead))
            return detail.sliced(lead.size());
    }
    return {};
}

QString tlsFailure(const QString& detail) {
    const QString reason = tlsReason(detail);
    const QString failure = u"SSL handshake failed"_s;
    return reason.isEmpty() ? failure : failure + u": "_s + reason;
}

// How curl calls a line without end, in its versions and wherever the line stands.
bool isWithoutEnd(const TransferEnd& end) {
    constexpr auto tooLargeToCurl = static_cast<CURLcode>(100); // which 7.88 has no name for
    return end.result == CURLE_OUT_OF_MEMORY || end.result == tooLargeToCurl ||
           (end.result == CURLE_RECV_ERROR &&
            (end.detail.contains(u"too large"_s) || end.detail.contains(u"Out of memory"_s)));
}

QString connectFailure(int systemError) {
    if (systemError == 0)
        return u"Connection failed"_s;
    if (systemError == ECONNRESET) // at once, or a moment later: the other side's doing
        return connectionClosed;
    return QString::fromStdString(std::generic_category().message(systemError));
}

// Curl has no code of its own for chunks that are none.
QString brokenOff(const QString& detail) {
    return detail.contains(u"chunk"_s) ? u"The answer is damaged"_s : connectionClosed;
}

QString described(const TransferEnd& end) {
    switch (end.result) {
    case CURLE_COULDNT_RESOLVE_HOST:
        return u"Host %1 not found"_s.arg(end.host);
    case CURLE_COULDNT_RESOLVE_PROXY:
        return u"Proxy not found"_s;
    case CURLE_COULDNT_CONNECT:
        return connectFailure(end.systemError);
    case CURLE_RECV_ERROR:
        return brokenOff(end.detail);
    case CURLE_GOT_NOTHING:
    case CURLE_PARTIAL_FILE:
    case CURLE_SEND_ERROR:
        return connectionClosed;
    case CURLE_PROXY: // a SOCKS proxy refused, closed, or is none
        return u"The proxy made no connection"_s;
    case CURLE_SSL_CONNECT_ERROR:
    case CURLE_PEER_FAILED_VERIFICATION:
        return tlsFailure(end.detail);
    default:
        return end.detail.isEmpty() ? QString::fromUtf8(curl_easy_strerror(end.result))
                                    : end.detail;
    }
}

} // namespace

HttpOutcome outcomeOf(const TransferEnd& end, const QByteArray& body) {
    if (end.tooLarge || isWithoutEnd(end))
        return tooLarge();
    if (end.packed)
        return noHttp();
    switch (end.result) {
    case CURLE_OK:
        if (end.status == 0)
            return noHttp();
        // To curl the end of the connection ends a head as well.
        return end.headComplete ? HttpOutcome(HttpResponse{end.status, body}) : closed();
    case CURLE_WEIRD_SERVER_REPLY:
    case CURLE_UNSUPPORTED_PROTOCOL: // HTTP/0.9, as anything without a status line reads
    case CURLE_BAD_CONTENT_ENCODING: // what newer versions call packed themselves
        return noHttp();
    case CURLE_OPERATION_TIMEDOUT:
        return timedOut();
    default:
        break;
    }
    if (end.status == 0 && end.proxyStatus != 0 && end.proxyStatus / 100 != 2)
        return failed(u"The proxy answered %1"_s.arg(end.proxyStatus));
    return failed(described(end));
}

HttpOutcome timedOut() {
    return failed(u"The request timed out"_s);
}

HttpOutcome failed(const QString& description) {
    return tl::unexpected(TransportError{TransportError::Kind::Failed, description});
}

HttpOutcome refused(const QString& description) {
    return tl::unexpected(TransportError{TransportError::Kind::Refused, description});
}

HttpOutcome tooLarge() {
    return tl::unexpected(
        TransportError{TransportError::Kind::BodyTooLarge, u"The answer is too large"_s});
}

} // namespace lumora

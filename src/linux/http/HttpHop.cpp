#include "linux/http/HttpHop.h"

#include "linux/http/HeaderValue.h"
#include "linux/http/TransferOutcome.h"
#include "linux/http/TrustStore.h"
#include "platform/LoopbackHost.h"

#include <linux/tcp.h>
#include <netinet/in.h>
#include <sys/socket.h>

#include <tuple>

using namespace Qt::Literals::StringLiterals;

namespace lumora {

namespace {

bool isHttp(const QUrl& url) {
    return (url.scheme() == u"https"_s || url.scheme() == u"http"_s) && !url.host().isEmpty();
}

// Curl's callbacks: taking fewer bytes than were offered ends the transfer.
size_t takeHeadLine(const char* data, size_t, size_t count, void* answer) {
    const QByteArrayView line(data, static_cast<qsizetype>(count));
    return static_cast<ReceivedAnswer*>(answer)->takeHeadLine(line) ? count : 0;
}

size_t takeBody(const char* data, size_t, size_t count, void* answer) {
    const QByteArrayView bytes(data, static_cast<qsizetype>(count));
    return static_cast<ReceivedAnswer*>(answer)->takeBody(bytes) ? count : 0;
}

void append(CurlLines& lines, const QByteArray& line) {
    // Absent only when there is no memory left; the list is still there then.
    if (curl_slist* const longer = curl_slist_append(lines.get(), line.constData())) {
        std::ignore = lines.release(); // it is part of the longer one
        lines.reset(longer);
    }
}

qint64 receivedBytes(curl_socket_t socket) {
    tcp_info info{};
    socklen_t size = sizeof info;
    if (getsockopt(socket, IPPROTO_TCP, TCP_INFO, &info, &size) != 0)
        return 0; // what is watched may be no connection, but a pair of the resolver's
    return static_cast<qint64>(info.tcpi_bytes_received);
}

} // namespace

// What a proxy carries unencrypted it can read, and what is meant for this very computer has no
// business on another.
bool goesDirect(const QUrl& url) {
    return url.scheme() != u"https"_s || isLoopbackHost(url.host());
}

void setWay(CURL* transfer, const QUrl& url) {
    curl_easy_setopt(transfer, CURLOPT_PROTOCOLS_STR, "http,https");
    curl_easy_setopt(transfer, CURLOPT_HTTP_VERSION, static_cast<long>(CURL_HTTP_VERSION_1_1));
    if (goesDirect(url))
        curl_easy_setopt(transfer, CURLOPT_PROXY, ""); // not even one that the environment names

    // A kept connection may have died unnoticed, in a suspend for one.
    curl_easy_setopt(transfer, CURLOPT_FRESH_CONNECT, 1L);
    curl_easy_setopt(transfer, CURLOPT_FORBID_REUSE, 1L);
    curl_easy_setopt(transfer, CURLOPT_SSL_SESSIONID_CACHE, 0L);
    curl_easy_setopt(transfer, CURLOPT_DNS_CACHE_TIMEOUT, 0L);
    // A name server that hangs must not hold up whoever gives up waiting for it.
    curl_easy_setopt(transfer, CURLOPT_QUICK_EXIT, 1L);

    constexpr long tls = CURL_SSLVERSION_TLSv1_2;
    QByteArray certificates = environmentCertificates();
    curl_blob blob{certificates.data(), static_cast<size_t>(certificates.size()), CURL_BLOB_COPY};
    curl_easy_setopt(transfer, CURLOPT_SSLVERSION, tls);
    curl_easy_setopt(transfer, CURLOPT_PROXY_SSLVERSION, tls);
    for (const auto& [folder, file, named] :
         {std::tuple(CURLOPT_CAPATH, CURLOPT_CAINFO, CURLOPT_CAINFO_BLOB),
          std::tuple(CURLOPT_PROXY_CAPATH, CURLOPT_PROXY_CAINFO, CURLOPT_PROXY_CAINFO_BLOB)}) {
        curl_easy_setopt(transfer, folder, systemCertificates);
        curl_easy_setopt(transfer, file, nullptr);
        if (!certificates.isEmpty())
            curl_easy_setopt(transfer, named, &blob);
    }
}

HttpHop::HttpHop(CurlLoop& loop, const HttpLimits& limits, HttpRequest request, Ended ended)
    : m_loop(loop)
    , m_limits(limits)
    , m_request(std::move(request))
    , m_ended(std::move(ended))
    , m_answer(limits.headBytes, limits.bodyBytes)
    , m_transfer(curl_easy_init()) {
    m_silence.setSingleShot(true);
    m_silence.setInterval(m_limits.inactivity);
    QObject::connect(&m_silence, &QTimer::timeout, &m_silence, [this] { breakOff(timedOut()); });
}

HttpHop::~HttpHop() {
    m_loop.remove(m_transfer.get());
}

tl::expected<void, QString> HttpHop::start() {
    if (!isHttp(m_request.url))
        return tl::unexpected(u"The address is no http or https address"_s);
    if (auto set = setHead(); !set)
        return set;
    setWay(m_transfer.get(), m_request.url);
    setAnswer();
    m_silence.start();
    m_loop.add(m_transfer.get(), *this);
    return {};
}

tl::expected<void, QString> HttpHop::setHead() {
    CURL* const transfer = m_transfer.get();
    const QByteArray url = m_request.url.toEncoded(QUrl::RemoveFragment);
    curl_easy_setopt(transfer, CURLOPT_URL, url.constData());
    curl_easy_setopt(transfer, CURLOPT_PATH_AS_IS, 1L);
    curl_easy_setopt(transfer, CURLOPT_CUSTOMREQUEST, m_request.method.constData());
    if (m_request.method != "GET" || m_request.body) {
        const QByteArray body = m_request.body.value_or(QByteArray());
        curl_easy_setopt(transfer, CURLOPT_POSTFIELDSIZE_LARGE, curl_off_t{body.size()});
        curl_easy_setopt(transfer, CURLOPT_COPYPOSTFIELDS, body.constData());
        append(m_head, "Expect:"); // no asking first, however large the body is
    }
    curl_easy_setopt(transfer, CURLOPT_USERAGENT, "Lumora/" LUMORA_VERSION);
    append(m_head, "Accept-Encoding: identity");
    append(m_head, "Connection: close");
    for (const auto& [name, value] : m_request.headers) {
        const auto sound = headerValue(value);
        if (!sound) {
            return tl::unexpected(
                u"The header %1 contains a line break"_s.arg(QString::fromLatin1(name)));
        }
        const Wiped line(name + ": " + *sound);
        append(m_head, line.text());
    }
    curl_easy_setopt(transfer, CURLOPT_HTTPHEADER, m_head.get());
    return {};
}

void HttpHop::setAnswer() {
    CURL* const transfer = m_transfer.get();
    curl_easy_setopt(transfer, CURLOPT_ERRORBUFFER, m_detail.data());
    curl_easy_setopt(transfer, CURLOPT_HEADERFUNCTION, &takeHeadLine);
    curl_easy_setopt(transfer, CURLOPT_HEADERDATA, &m_answer);
    curl_easy_setopt(transfer, CURLOPT_WRITEFUNCTION, &takeBody);
    curl_easy_setopt(transfer, CURLOPT_WRITEDATA, &m_answer);
}

void HttpHop::transferMoved(curl_socket_t socket) {
    m_silence.start();
    if (receivedBytes(socket) > m_limits.receivedBytes)
        breakOff(tooLarge());
}

void HttpHop::transferEnded(CURLcode result) {
    m_silence.stop();
    TransferEnd end;
    end.result = result;
    end.status = static_cast<int>(told<long>(CURLINFO_RESPONSE_CODE));
    end.proxyStatus = static_cast<int>(told<long>(CURLINFO_HTTP_CONNECTCODE));
    end.systemError = static_cast<int>(told<long>(CURLINFO_OS_ERRNO));
    end.headComplete = m_answer.isHeadComplete();
    end.tooLarge = m_answer.isTooLarge();
    end.packed = m_answer.isPacked();
    end.host = m_request.url.host();
    end.detail = QString::fromUtf8(m_detail.data());

    QByteArray location;
    curl_header* header = nullptr;
    if (curl_easy_header(m_transfer.get(), "Location", 0, CURLH_HEADER, -1, &header) == CURLHE_OK)
        location = header->value;
    m_ended(outcomeOf(end, m_answer.body()), std::move(location)); // this object may be gone
}

void HttpHop::breakOff(const HttpOutcome& outcome) {
    m_silence.stop();
    m_loop.remove(m_transfer.get());
    m_ended(outcome, {}); // this object may be gone
}

template <typename Value>
Value HttpHop::told(CURLINFO what) const {
    Value value{};
    curl_easy_getinfo(m_transfer.get(), what, &value);
    return value;
}

} // namespace lumora

#include "companion/fetching/CurlWeb.h"

#include <curl/curl.h>

#include <memory>
#include <tuple>

using namespace Qt::Literals::StringLiterals;

namespace lumora::companion {

namespace {

struct EasyDeleter {
    void operator()(CURL* easy) const { curl_easy_cleanup(easy); }
};

struct LinesDeleter {
    void operator()(curl_slist* lines) const { curl_slist_free_all(lines); }
};

/// What one transfer fills, and what it may be ended for.
struct Transfer {
    const WebRequest& request;
    const std::atomic<bool>& isEnding;
    std::unique_ptr<CURL, EasyDeleter> easy{curl_easy_init()};
    std::unique_ptr<curl_slist, LinesDeleter> head{};
    WebAnswer answer{};
};

size_t takeBody(const char* data, size_t, size_t count, void* taker) {
    auto& transfer = *static_cast<Transfer*>(taker);
    const auto size = static_cast<qsizetype>(count);
    if (transfer.answer.body.size() + size > transfer.request.largest)
        return 0; // which ends it
    transfer.answer.body.append(data, size);
    return count;
}

int goesOn(void* asker, curl_off_t, curl_off_t, curl_off_t, curl_off_t) {
    return static_cast<Transfer*>(asker)->isEnding ? 1 : 0;
}

bool addLine(Transfer& transfer, const QByteArray& line) {
    if (line.contains('\n') || line.contains('\r'))
        return false;
    if (curl_slist* const longer = curl_slist_append(transfer.head.get(), line.constData())) {
        std::ignore = transfer.head.release(); // it is part of the longer one
        transfer.head.reset(longer);
    }
    return true;
}

bool setRequest(Transfer& transfer, const QUrl& url) {
    CURL* const easy = transfer.easy.get();
    curl_easy_setopt(easy, CURLOPT_URL, url.toEncoded(QUrl::RemoveFragment).constData());
    curl_easy_setopt(easy, CURLOPT_USERAGENT, "lumora-service/" LUMORA_VERSION);
    curl_easy_setopt(easy, CURLOPT_ACCEPT_ENCODING, ""); // whatever curl can unpack
    if (const auto& body = transfer.request.body) {
        curl_easy_setopt(easy, CURLOPT_POSTFIELDSIZE_LARGE, curl_off_t{body->size()});
        curl_easy_setopt(easy, CURLOPT_POSTFIELDS, body->constData());
    }
    bool isSound = true;
    for (const auto& [name, value] : transfer.request.headers)
        isSound = addLine(transfer, name + ": " + value) && isSound;
    curl_easy_setopt(easy, CURLOPT_HTTPHEADER, transfer.head.get());
    return isSound;
}

void setWay(Transfer& transfer, const QUrl& url) {
    CURL* const easy = transfer.easy.get();
    curl_easy_setopt(easy, CURLOPT_PROTOCOLS_STR, url.scheme().toLatin1().constData());
    curl_easy_setopt(easy, CURLOPT_REDIR_PROTOCOLS_STR, "https");
    curl_easy_setopt(easy, CURLOPT_FOLLOWLOCATION, 1L);
    curl_easy_setopt(easy, CURLOPT_MAXREDIRS, 5L);
    if (url.scheme() != u"https"_s)
        curl_easy_setopt(easy, CURLOPT_PROXY, ""); // it never leaves this computer
    const auto longest = static_cast<long>(transfer.request.longest.count());
    curl_easy_setopt(easy, CURLOPT_TIMEOUT_MS, longest);
    curl_easy_setopt(easy, CURLOPT_QUICK_EXIT, 1L); // nor does a name server hold it up
    curl_easy_setopt(easy, CURLOPT_NOSIGNAL, 1L);
    curl_easy_setopt(easy, CURLOPT_SSLVERSION, long{CURL_SSLVERSION_TLSv1_2});
    curl_easy_setopt(easy, CURLOPT_CAPATH, "/etc/ssl/certs");
    const QByteArray certificates = qgetenv("SSL_CERT_FILE");
    const char* const file = certificates.isEmpty() ? nullptr : certificates.constData();
    curl_easy_setopt(easy, CURLOPT_CAINFO, file);
}

void setAnswer(Transfer& transfer) {
    CURL* const easy = transfer.easy.get();
    curl_easy_setopt(easy, CURLOPT_WRITEFUNCTION, &takeBody);
    curl_easy_setopt(easy, CURLOPT_WRITEDATA, &transfer);
    curl_easy_setopt(easy, CURLOPT_XFERINFOFUNCTION, &goesOn);
    curl_easy_setopt(easy, CURLOPT_XFERINFODATA, &transfer);
    curl_easy_setopt(easy, CURLOPT_NOPROGRESS, 0L);
}

// Curl's own words would do, but that some of them hold the address.
QString inWords(CURLcode result) {
    switch (result) {
    case CURLE_COULDNT_RESOLVE_HOST:
        return u"The server was not found"_s;
    case CURLE_COULDNT_CONNECT:
        return u"The server could not be reached"_s;
    case CURLE_OPERATION_TIMEDOUT:
        return u"The server did not answer in time"_s;
    case CURLE_PEER_FAILED_VERIFICATION:
    case CURLE_SSL_CONNECT_ERROR:
        return u"The server could not prove who it is"_s;
    case CURLE_WRITE_ERROR:
        return u"The answer is too large"_s;
    case CURLE_TOO_MANY_REDIRECTS:
    case CURLE_UNSUPPORTED_PROTOCOL:
        return u"The server sends on to where nobody may go"_s;
    default:
        return u"The connection failed: "_s + QString::fromUtf8(curl_easy_strerror(result));
    }
}

QByteArray lastHeader(CURL* easy, const char* name) {
    curl_header* header = nullptr;
    if (curl_easy_header(easy, name, 0, CURLH_HEADER, -1, &header) != CURLHE_OK)
        return {};
    return header->value;
}

WebOutcome perform(const WebRequest& request, const std::atomic<bool>& isEnding) {
    const auto url = fetchableUrl(request.url);
    if (!url)
        return tl::unexpected(u"Only https addresses are fetched"_s);
    Transfer transfer{.request = request, .isEnding = isEnding};
    if (!setRequest(transfer, *url))
        return tl::unexpected(u"A header contains a line break"_s);
    setWay(transfer, *url);
    setAnswer(transfer);
    const CURLcode result = curl_easy_perform(transfer.easy.get());
    if (result != CURLE_OK)
        return tl::unexpected(inWords(result));
    long status = 0;
    curl_easy_getinfo(transfer.easy.get(), CURLINFO_RESPONSE_CODE, &status);
    transfer.answer.status = static_cast<int>(status);
    transfer.answer.etag = lastHeader(transfer.easy.get(), "ETag");
    transfer.answer.lastModified = lastHeader(transfer.easy.get(), "Last-Modified");
    return std::move(transfer.answer);
}

} // namespace

CurlWeb::CurlWeb() {
    curl_global_init(CURL_GLOBAL_DEFAULT); // before there are threads
    m_threads.setMaxThreadCount(4);
}

CurlWeb::~CurlWeb() {
    m_isEnding = true;
    m_threads.clear();
    m_threads.waitForDone();
}

void CurlWeb::send(WebRequest request, std::function<void(WebOutcome)> done) {
    m_threads.start([this, request = std::move(request), done = std::move(done)]() mutable {
        WebOutcome outcome = perform(request, m_isEnding);
        // Dropped with this object, which waits for its threads.
        QMetaObject::invokeMethod(
            this, [done = std::move(done), outcome = std::move(outcome)] { done(outcome); },
            Qt::QueuedConnection);
    });
}

} // namespace lumora::companion

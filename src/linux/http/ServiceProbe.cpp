#include "linux/http/ServiceProbe.h"

#include "linux/http/CurlHandles.h"
#include "linux/http/HttpHop.h"
#include "linux/http/RedirectRule.h"
#include "platform/Wiped.h"

#include <algorithm>
#include <array>
#include <tuple>

using namespace Qt::Literals::StringLiterals;

namespace lumora {

namespace {

using Stage = ServiceProbe::Stage;
using Certificate = ServiceProbe::Certificate;

/// What OpenSSL says of certificates, as its header numbers it.
Certificate certificateTrouble(CURL* transfer, const QByteArray& detail) {
    long verdict = 0;
    curl_easy_getinfo(transfer, CURLINFO_SSL_VERIFYRESULT, &verdict);
    switch (verdict) {
    case 9:
        return Certificate::NotYetValid;
    case 10:
        return Certificate::Expired;
    case 2:
    case 18:
    case 19:
    case 20:
    case 21:
        return Certificate::Untrusted;
    case 62:
        return Certificate::OtherName;
    default:
        return detail.contains("subject name") ? Certificate::OtherName : Certificate::Unknown;
    }
}

bool hasPassed(CURL* transfer, CURLINFO time) {
    curl_off_t microseconds = 0;
    curl_easy_getinfo(transfer, time, &microseconds);
    return microseconds > 0;
}

/// How far a transfer came that ran out of time or broke off.
Stage stageByTimes(CURL* transfer, bool overTls) {
    if (!hasPassed(transfer, CURLINFO_NAMELOOKUP_TIME_T))
        return Stage::NameLookup;
    if (!hasPassed(transfer, CURLINFO_CONNECT_TIME_T))
        return Stage::Connection;
    if (overTls && !hasPassed(transfer, CURLINFO_APPCONNECT_TIME_T))
        return Stage::Tls;
    return Stage::Answer;
}

Stage stageOf(CURLcode result, CURL* transfer, bool overTls) {
    long connectStatus = 0;
    curl_easy_getinfo(transfer, CURLINFO_HTTP_CONNECTCODE, &connectStatus);
    if (connectStatus != 0 && connectStatus / 100 != 2)
        return Stage::Proxy;
    switch (result) {
    case CURLE_COULDNT_RESOLVE_PROXY:
    case CURLE_PROXY:
        return Stage::Proxy;
    case CURLE_COULDNT_RESOLVE_HOST:
        return Stage::NameLookup;
    case CURLE_COULDNT_CONNECT:
        return Stage::Connection;
    case CURLE_PEER_FAILED_VERIFICATION:
    case CURLE_SSL_CONNECT_ERROR:
    case CURLE_SSL_CERTPROBLEM:
    case CURLE_SSL_CIPHER:
        return Stage::Tls;
    default:
        return stageByTimes(transfer, overTls);
    }
}

constexpr qsizetype largestBody = 16'777'216;
constexpr qsizetype largestHead = 262'144;

/// What comes, up to a bound.
struct Received {
    QByteArray bytes;
    qsizetype largest = 0;
    bool isTooLarge = false;
};

size_t keep(const char* data, size_t, size_t count, void* received) {
    auto& to = *static_cast<Received*>(received);
    to.isTooLarge = to.bytes.size() + qsizetype(count) > to.largest;
    if (to.isTooLarge)
        return 0;
    to.bytes.append(data, qsizetype(count));
    return count;
}

QByteArray headerOf(CURL* transfer, const char* name) {
    curl_header* found = nullptr;
    const auto result = curl_easy_header(transfer, name, 0, CURLH_HEADER, -1, &found);
    return result == CURLHE_OK ? QByteArray(found->value) : QByteArray();
}

CurlLines headLines(const HttpHeaders& headers) {
    CurlLines lines;
    for (const auto& [name, value] : headers) {
        const Wiped line(name + ": " + value);
        if (auto* const longer = curl_slist_append(lines.get(), line.text().constData())) {
            std::ignore = lines.release(); // it is part of the longer one
            lines.reset(longer);
        }
    }
    return lines;
}

/// One request and its answer. `location` is what the answer says of another place.
ServiceProbe
probeOnce(const HttpRequest& request, std::chrono::milliseconds limit, QByteArray& location) {
    const CurlTransfer owner(curl_easy_init());
    CURL* const transfer = owner.get();
    const CurlLines head = headLines(request.headers);
    Received body{.bytes = {}, .largest = largestBody};
    Received answerHead{.bytes = {}, .largest = largestHead};
    std::array<char, CURL_ERROR_SIZE> detail{};
    const QByteArray address = request.url.toEncoded(QUrl::RemoveFragment);
    curl_easy_setopt(transfer, CURLOPT_URL, address.constData());
    curl_easy_setopt(transfer, CURLOPT_PATH_AS_IS, 1L);
    curl_easy_setopt(transfer, CURLOPT_NOSIGNAL, 1L); // it is not alone in the process
    setWay(transfer, request.url);
    curl_easy_setopt(transfer, CURLOPT_TIMEOUT_MS, long(limit.count()));
    curl_easy_setopt(transfer, CURLOPT_HTTPHEADER, head.get());
    curl_easy_setopt(transfer, CURLOPT_ERRORBUFFER, detail.data());
    curl_easy_setopt(transfer, CURLOPT_WRITEFUNCTION, &keep);
    curl_easy_setopt(transfer, CURLOPT_WRITEDATA, &body);
    curl_easy_setopt(transfer, CURLOPT_HEADERFUNCTION, &keep);
    curl_easy_setopt(transfer, CURLOPT_HEADERDATA, &answerHead);

    const CURLcode result = curl_easy_perform(transfer);
    ServiceProbe probe;
    long status = 0;
    curl_easy_getinfo(transfer, CURLINFO_RESPONSE_CODE, &status);
    probe.status = int(status);
    probe.contentType = headerOf(transfer, "Content-Type");
    probe.date = headerOf(transfer, "Date");
    probe.body = body.bytes;
    probe.cutOff = body.isTooLarge;
    location = headerOf(transfer, "Location");
    if (result == CURLE_OK || probe.cutOff) {
        probe.reached = Stage::Complete;
        return probe;
    }
    probe.reached = stageOf(result, transfer, request.url.scheme() == u"https");
    probe.timedOut = result == CURLE_OPERATION_TIMEDOUT;
    probe.trouble = QString::fromUtf8(detail.data());
    if (probe.trouble.isEmpty())
        probe.trouble = QString::fromUtf8(curl_easy_strerror(result));
    if (probe.reached == Stage::Tls)
        probe.certificate = result == CURLE_PEER_FAILED_VERIFICATION
                                ? certificateTrouble(transfer, detail.data())
                                : Certificate::Sound;
    return probe;
}

} // namespace

ServiceProbe
probeService(const QUrl& url, const QByteArray& token, std::chrono::milliseconds limit) {
    using Clock = std::chrono::steady_clock;
    const auto end = Clock::now() + limit;
    HttpRequest request{
        .method = "GET",
        .url = url,
        .headers =
            {{"Accept", "application/json"},
             {"Accept-Encoding", "identity"},
             {"Connection", "close"}},
        .body = std::nullopt,
    };
    if (!token.isEmpty())
        request.headers.emplaceBack("X-Api-Key", token);
    for (int hops = 0;; ++hops) {
        QByteArray location;
        const auto left = std::chrono::duration_cast<std::chrono::milliseconds>(end - Clock::now());
        ServiceProbe probe =
            probeOnce(request, std::max(left, std::chrono::milliseconds(1)), location);
        const auto next = probe.reached == Stage::Complete
                              ? followRedirect(request, probe.status, location, hops)
                              : std::nullopt;
        if (next) {
            request = *next;
            continue;
        }
        if (probe.status / 100 == 3 && !location.isEmpty())
            probe.redirect = request.url.resolved(QUrl::fromEncoded(location));
        return probe;
    }
}

} // namespace lumora

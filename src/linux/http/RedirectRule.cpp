#include "linux/http/RedirectRule.h"

using namespace Qt::Literals::StringLiterals;

namespace lumora {

namespace {

bool isRedirect(int status) {
    return status == 301 || status == 302 || status == 303 || status == 307 || status == 308;
}

bool turnsIntoGet(int status, const QByteArray& method) {
    return (status == 303 && method != "GET") || (status <= 302 && method == "POST");
}

int portOf(const QUrl& url) {
    return url.port(url.scheme() == u"https"_s ? 443 : 80);
}

bool haveSameOrigin(const QUrl& one, const QUrl& other) {
    return one.scheme() == other.scheme() && one.host() == other.host() &&
           portOf(one) == portOf(other);
}

} // namespace

std::optional<HttpRequest>
followRedirect(const HttpRequest& sent, int status, const QByteArray& location, int hops) {
    if (!isRedirect(status) || location.isEmpty() || hops >= maximumRedirects)
        return std::nullopt;
    const QUrl target = QUrl::fromEncoded(location, QUrl::StrictMode);
    if (!target.isValid())
        return std::nullopt;
    const QUrl url = sent.url.resolved(target);
    if (!haveSameOrigin(sent.url, url))
        return std::nullopt;

    HttpRequest next = sent;
    next.url = url;
    if (turnsIntoGet(status, sent.method)) {
        next.method = "GET";
        next.body.reset();
        next.headers.removeIf([](const auto& header) {
            return header.first.compare("Content-Type", Qt::CaseInsensitive) == 0;
        });
    }
    return next;
}

} // namespace lumora

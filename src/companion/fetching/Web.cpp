#include "companion/fetching/Web.h"

using namespace Qt::Literals::StringLiterals;

namespace lumora::companion {

namespace {

bool isThisComputer(const QString& host) {
    return host == u"localhost"_s || host == u"127.0.0.1"_s || host == u"::1"_s;
}

} // namespace

std::optional<QUrl> fetchableUrl(QUrl url) {
    if (url.scheme() == u"webcal"_s || url.scheme() == u"webcals"_s)
        url.setScheme(u"https"_s);
    const bool isSafe =
        url.scheme() == u"https"_s || (url.scheme() == u"http"_s && isThisComputer(url.host()));
    if (!isSafe || !url.isValid() || url.host().isEmpty())
        return std::nullopt;
    return url;
}

} // namespace lumora::companion

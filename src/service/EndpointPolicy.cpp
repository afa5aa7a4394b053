#include "service/EndpointPolicy.h"

#include "platform/LoopbackHost.h"

using namespace Qt::Literals::StringLiterals;

namespace lumora {

tl::expected<QUrl, LumoError> parseEndpoint(const QString& endpoint) {
    QUrl url(endpoint.trimmed(), QUrl::StrictMode);
    // An empty URL is not valid either.
    if (!url.isValid())
        return tl::unexpected(LumoError::invalidURL());
    return url;
}

QString actionEndpoint(const QString& endpoint) {
    QStringView rest = QStringView(endpoint).trimmed();
    while (rest.startsWith(u'/'))
        rest = rest.sliced(1);
    while (rest.endsWith(u'/'))
        rest.chop(1);
    return rest.toString() + u"/action"_s;
}

tl::expected<void, LumoError> checkTokenMayGoTo(const QUrl& url) {
    const bool overTls = url.scheme() == u"https"_s;
    const bool toThisComputer = url.scheme() == u"http"_s && isLoopbackHost(url.host());
    if (!overTls && !toThisComputer) {
        return tl::unexpected(
            LumoError::refused(u"The endpoint must start with https:// to keep the token private; "
                               "http:// works only for this computer"_s));
    }
    return {};
}

} // namespace lumora

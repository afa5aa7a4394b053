#include "doctor/Evidence.h"

#include "platform/LoopbackHost.h"
#include "platform/PreferenceKeys.h"
#include "service/EndpointPolicy.h"

#include <QStringList>

#include <algorithm>

using namespace Qt::Literals::StringLiterals;

namespace lumora {

namespace {

using Stage = ServiceProbe::Stage;

/// Whether the list in no_proxy exempts `host`, by itself or with a domain that it is in.
bool isExempt(const QString& host, const QString& list) {
    const QStringList names = list.split(u',', Qt::SkipEmptyParts);
    return std::ranges::any_of(names, [&host](const QString& entry) {
        QString name = entry.trimmed();
        if (name == u"*")
            return true;
        while (name.startsWith(u'.'))
            name.remove(0, 1);
        return !name.isEmpty() && (host == name || host.endsWith(u'.' + name));
    });
}

QString either(const QHash<QString, QString>& environment, const QString& name) {
    return environment.value(name, environment.value(name.toUpper()));
}

} // namespace

std::optional<QUrl> serviceUrl(const Evidence& evidence) {
    const auto url = parseEndpoint(evidence.settings.value(PreferenceKeys::endpointURL.name));
    if (!url || url->host().isEmpty() || !checkTokenMayGoTo(*url))
        return std::nullopt;
    return *url;
}

QString proxyOnTheWay(const Evidence& evidence) {
    const auto url = serviceUrl(evidence);
    if (!url || url->scheme() != u"https" || isLoopbackHost(url->host()))
        return {};
    QString proxy = either(evidence.environment, u"https_proxy"_s);
    if (proxy.isEmpty())
        proxy = either(evidence.environment, u"all_proxy"_s);
    if (proxy.isEmpty() || isExempt(url->host(), either(evidence.environment, u"no_proxy"_s)))
        return {};
    const QUrl address(proxy.contains("://"_L1) ? proxy : u"http://"_s + proxy);
    return address.host() + (address.port() < 0 ? QString() : u":%1"_s.arg(address.port()));
}

std::optional<Stage> wayTo(const Evidence& evidence) {
    if (!evidence.askedService)
        return std::nullopt;
    const bool proxied = !proxyOnTheWay(evidence).isEmpty();
    if (!evidence.service)
        return proxied ? Stage::Proxy : Stage::NameLookup; // nothing else hangs without an end
    const Stage reached = evidence.service->reached;
    return proxied && reached < Stage::Tls ? Stage::Proxy : reached;
}

QString forPeople(const QUrl& url) {
    return url.toDisplayString(QUrl::RemoveUserInfo | QUrl::RemoveQuery | QUrl::RemoveFragment);
}

} // namespace lumora

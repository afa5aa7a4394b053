#include "doctor/Links.h"
#include "platform/PreferenceKeys.h"
#include "service/EndpointPolicy.h"

using namespace Qt::Literals::StringLiterals;

namespace lumora {

Finding endpointLink(const Evidence& evidence) {
    const QString link = u"endpoint"_s;
    const QString remedy =
        u"Write the whole address of the briefing into the settings, from https:// on"_s;
    const QString text = evidence.settings.value(PreferenceKeys::endpointURL.name).trimmed();
    if (text.isEmpty())
        return Finding::failed(link, u"No address is set"_s, remedy);
    const auto url = parseEndpoint(text);
    if (!url)
        return Finding::failed(link, url.error().errorDescription(), remedy);
    const bool isWeb = url->scheme() == u"https" || url->scheme() == u"http";
    if (!isWeb || url->host().isEmpty())
        return Finding::failed(link, u"It is no https address"_s, remedy);
    if (const auto allowed = checkTokenMayGoTo(*url); !allowed)
        return Finding::failed(link, allowed.error().errorDescription(), remedy);
    return Finding::ok(link, forPeople(*url));
}

} // namespace lumora

#include "doctor/Links.h"

using namespace Qt::Literals::StringLiterals;

namespace lumora {

Finding nameLink(const Evidence& evidence) {
    using Stage = ServiceProbe::Stage;
    const QString link = u"name"_s;
    const auto way = wayTo(evidence);
    if (!way || way < Stage::NameLookup)
        return Finding::notTried(link);
    if (!proxyOnTheWay(evidence).isEmpty())
        return Finding::ok(link, u"The proxy looks it up"_s);
    const auto url = serviceUrl(evidence);
    const QString host = url ? url->host() : QString();
    if (way > Stage::NameLookup)
        return Finding::ok(link, host);
    const bool timedOut = !evidence.service || evidence.service->timedOut;
    return Finding::failed(
        link, timedOut ? u"No name server answers"_s : u"No name server knows %1"_s.arg(host),
        u"Look whether the network is there and the host's name is written right"_s);
}

} // namespace lumora

#include "doctor/Links.h"

using namespace Qt::Literals::StringLiterals;

namespace lumora {

Finding connectionLink(const Evidence& evidence) {
    using Stage = ServiceProbe::Stage;
    const QString link = u"connection"_s;
    const auto way = wayTo(evidence);
    if (!way || way < Stage::Connection)
        return Finding::notTried(link);
    if (!proxyOnTheWay(evidence).isEmpty())
        return Finding::ok(link, u"The proxy makes it"_s);
    const auto url = serviceUrl(evidence);
    const int usual = url && url->scheme() == u"https" ? 443 : 80;
    const QString port = u"port %1"_s.arg(url ? url->port(usual) : usual);
    if (way > Stage::Connection)
        return Finding::ok(link, port);
    return Finding::failed(
        link,
        evidence.service->timedOut ? u"Nobody answers at %1"_s.arg(port)
                                   : u"Nobody takes connections at %1"_s.arg(port),
        u"Look whether the service runs, at that port, and no firewall is between"_s);
}

} // namespace lumora

#include "doctor/Links.h"

using namespace Qt::Literals::StringLiterals;

namespace lumora {

Finding proxyLink(const Evidence& evidence) {
    const QString link = u"proxy"_s;
    const auto way = wayTo(evidence);
    if (!way)
        return Finding::notTried(link);
    const QString proxy = proxyOnTheWay(evidence);
    if (proxy.isEmpty())
        return Finding::ok(link, u"There is none on the way"_s);
    if (way == ServiceProbe::Stage::Proxy)
        return Finding::failed(
            link, proxy + u": "_s + (evidence.service ? evidence.service->trouble : u"no answer"_s),
            u"Correct https_proxy or all_proxy, or name the service's host in no_proxy"_s);
    return Finding::ok(link, proxy);
}

} // namespace lumora

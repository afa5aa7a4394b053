#include "linux/http/OriginProxyFactory.h"

#include "platform/LoopbackHost.h"

namespace lumora {

QList<QNetworkProxy> OriginProxyFactory::queryProxy(const QNetworkProxyQuery& query) {
    if (isLoopbackHost(query.peerHostName()))
        return {QNetworkProxy(QNetworkProxy::NoProxy)};
    return systemProxyForQuery(query);
}

} // namespace lumora

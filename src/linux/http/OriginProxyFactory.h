#pragma once

#include <QNetworkProxyFactory>

namespace lumora {

/// The system's proxy settings, except that what is meant for this very computer never goes
/// through a proxy, whatever the settings say: it may be unencrypted.
class OriginProxyFactory final : public QNetworkProxyFactory {
public:
    QList<QNetworkProxy> queryProxy(const QNetworkProxyQuery& query) override;
};

} // namespace lumora

#pragma once

#include "platform/NetworkMonitor.h"

#include <QDBusConnection>
#include <QDBusMessage>

#include <functional>

namespace lumora {

/// Hears of the network from NetworkManager on the system bus. Without a bus or NetworkManager it
/// stays silent; NetworkManager may come, go and come back.
class NetworkManagerMonitor final : public NetworkMonitor {
    Q_OBJECT

public:
    using Bus = std::function<QDBusConnection()>;

    /// `bus` is called when the first listener connects, not before.
    explicit NetworkManagerMonitor(Bus bus = &QDBusConnection::systemBus);

protected:
    void connectNotify(const QMetaMethod& signal) override;

private Q_SLOTS:
    void stateChanged(const QDBusMessage& message);

private:
    Bus m_bus;
};

} // namespace lumora

#pragma once

#include "platform/WakeMonitor.h"

#include <QDBusConnection>
#include <QDBusMessage>

#include <functional>

namespace lumora {

/// Hears of waking from logind on the system bus. Without a bus or logind it stays silent; logind
/// may come, go and come back.
class LogindWakeMonitor final : public WakeMonitor {
    Q_OBJECT

public:
    using Bus = std::function<QDBusConnection()>;

    /// `bus` is called when the first listener connects: joining a bus takes several exchanges
    /// with it, and nobody listens before the status item is shown.
    explicit LogindWakeMonitor(Bus bus = &QDBusConnection::systemBus);

protected:
    void connectNotify(const QMetaMethod& signal) override;

private Q_SLOTS:
    void prepareForSleep(const QDBusMessage& message);

private:
    Bus m_bus;
};

} // namespace lumora

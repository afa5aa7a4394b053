#pragma once

#include "platform/WakeMonitor.h"

#include <QDBusConnection>

namespace lumora {

/// Hears of waking from logind on the system bus. Without a bus or logind it stays silent; logind
/// may come, go and come back.
class LogindWakeMonitor final : public WakeMonitor {
    Q_OBJECT

public:
    explicit LogindWakeMonitor(QDBusConnection bus = QDBusConnection::systemBus());

private Q_SLOTS:
    void prepareForSleep(bool goingToSleep);
};

} // namespace lumora

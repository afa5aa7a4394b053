#pragma once

#include <QObject>

namespace lumora {

/// Tells when the machine comes back from sleep. Where that cannot be known, it stays silent.
class WakeMonitor : public QObject {
    Q_OBJECT

Q_SIGNALS:
    /// The machine has just woken.
    void woke();
};

} // namespace lumora

#pragma once

#include <QObject>

namespace lumora {

/// Tells when the network comes up. Where that cannot be known, it stays silent.
class NetworkMonitor : public QObject {
    Q_OBJECT

Q_SIGNALS:
    /// Other machines can be reached again, or by other ways.
    void cameUp();
};

} // namespace lumora

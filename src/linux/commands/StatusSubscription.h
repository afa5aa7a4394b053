#pragma once

#include <QDBusConnection>
#include <QDBusServiceWatcher>
#include <QObject>
#include <QString>

#include <optional>

class QDBusPendingCallWatcher;

namespace lumora {

/// Hears from the running program what it shows, at once and after every change, and goes on with
/// the next one when it ends. Asks nothing in between.
class StatusSubscription : public QObject {
    Q_OBJECT

public:
    /// What changes are of interest.
    enum class Extent {
        Label,      ///< those that can be seen in the bar
        Everything, ///< also those of the tooltip and of what is under way
    };

    StatusSubscription(QDBusConnection bus, Extent extent);

Q_SIGNALS:
    /// What the program shows now, as `CommandClient::status` has it; absent while none runs.
    void changed(const std::optional<QString>& status);

    /// The bus has gone, and with it all that there was to hear.
    void lost();

private Q_SLOTS:
    void ask();

private:
    void hear(const QString& signal);
    void take(QDBusPendingCallWatcher* call);

    QDBusConnection m_bus;
    QDBusServiceWatcher m_watcher;
    bool m_asking = false;
    bool m_askAgain = false; ///< something changed while the last answer was under way
};

} // namespace lumora

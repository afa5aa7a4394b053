#pragma once

#include "linux/notifications/NotificationAbilities.h"

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusServiceWatcher>
#include <QObject>
#include <QVariantList>

#include <chrono>
#include <functional>
#include <optional>
#include <tuple>

namespace lumora {

/// A notification that a server shows. Ids alone are not enough: the next server counts anew.
struct ShownNotification {
    QString server; ///< unique name on the bus
    uint id = 0;

    bool operator==(const ShownNotification&) const = default;

    bool operator<(const ShownNotification& other) const {
        return std::tie(server, id) < std::tie(other.server, other.id);
    }
};

/// Whatever program shows the desktop's notifications by now, started on demand where the bus can.
/// It is listened to from the first question on. Nothing here waits; of a question whose server
/// object ends before the answer, nothing is heard.
class NotificationServer final : public QObject {
    Q_OBJECT

public:
    explicit NotificationServer(const QDBusConnection& bus);

    /// Asks whether there is a server, and what it can do; the answer is absent when none came
    /// within `patience`.
    void askAbilities(
        std::chrono::milliseconds patience,
        const std::function<void(const std::optional<NotificationAbilities>&)>& onAnswer);

    /// Has this `server`, and no successor of it, show a notification; the answer is absent when
    /// that failed or none came within `patience`.
    void notify(
        const QString& server, const QVariantList& arguments, std::chrono::milliseconds patience,
        const std::function<void(const std::optional<ShownNotification>&)>& onAnswer);

Q_SIGNALS:
    /// Another server than before, or none any longer: what the last one showed is out of reach.
    void changed();

    /// A server is there that was not there before. Follows `changed`.
    void appeared();

    /// The user reacted to a notification, perhaps another program's.
    void actionInvoked(const ShownNotification& notification);

    /// What brings a window to the front when the reaction that follows is heard.
    void activationToken(const ShownNotification& notification, const QByteArray& token);

    /// The notification is no longer shown.
    void closed(const ShownNotification& notification);

private Q_SLOTS:
    void onActionInvoked(const QDBusMessage& message);
    void onActivationToken(const QDBusMessage& message);
    void onNotificationClosed(const QDBusMessage& message);

private:
    void listen();
    void
    ask(const QDBusMessage& call, std::chrono::milliseconds patience,
        const std::function<void(const QDBusMessage&)>& onAnswer);

    QDBusConnection m_bus;
    QDBusServiceWatcher m_watch;
    bool m_listening = false;
    QString m_owner; ///< of the service's name; empty: none, or not known yet
};

} // namespace lumora

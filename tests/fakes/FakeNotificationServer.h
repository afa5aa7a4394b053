#pragma once

#include <QDBusConnection>
#include <QDBusContext>
#include <QDBusMessage>
#include <QObject>
#include <QStringList>
#include <QVariantMap>

namespace lumora::tests {

/// A notification server on a connection of its own that shows nothing: it does what a test says
/// and remembers what it was asked for.
class FakeNotificationServer : public QObject, protected QDBusContext {
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.freedesktop.Notifications")

public:
    /// What one `Notify` call said.
    struct Notification {
        uint replacesId = 0;
        QString summary;
        QString body;
        QStringList actions;
        QVariantMap hints;
    };

    /// Holds calls of `heldMethod` from the start. `announced`: takes the service's name, and is
    /// the desktop's server from then on.
    explicit FakeNotificationServer(
        const QDBusConnection& bus, QString heldMethod = {}, bool announced = true);

    /// The server leaves the bus at once, as in a crash.
    ~FakeNotificationServer() override;

    const QDBusConnection& bus() const { return m_bus; }

    /// Calls of this method get no answer until `release`.
    void hold(const QString& method) { m_heldMethod = method; }

    /// Answers what was held back, and everything at once from now on.
    void release();

    /// Answers the next calls of `Notify` with an error.
    void refuse(int calls) { m_refusals = calls; }

    /// Gives what replaces another notification a new id, which servers may do.
    void renumber() { m_renumbers = true; }

    QStringList capabilities{
        QStringLiteral("actions"), QStringLiteral("body"), QStringLiteral("body-markup")};
    QString program = QStringLiteral("fake"); ///< what it calls itself
    QList<Notification> shown; ///< every notification taken, in order; their ids count from 1
    int notifyCalls = 0;       ///< answered or not
    int capabilityCalls = 0;   ///< answered or not

public Q_SLOTS:
    QStringList GetCapabilities();
    QString GetServerInformation(QString& vendor, QString& version, QString& protocol) const;
    uint Notify(
        const QString& appName, uint replacesId, const QString& appIcon, const QString& summary,
        const QString& body, const QStringList& actions, const QVariantMap& hints, int timeout);

Q_SIGNALS:
    void ActionInvoked(uint id, const QString& key);
    void ActivationToken(uint id, const QString& token);
    void NotificationClosed(uint id, uint reason);

private:
    bool isHeld(const QString& method, const QVariant& laterAnswer);

    struct Held {
        QDBusMessage call;
        QVariant answer;
    };

    QDBusConnection m_bus;
    QString m_heldMethod;
    QList<Held> m_held;
    int m_refusals = 0;
    bool m_renumbers = false;
};

} // namespace lumora::tests

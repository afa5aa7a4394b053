#pragma once

#include <QDBusConnection>
#include <QDBusContext>
#include <QObject>
#include <QStringList>

namespace lumora::tests {

/// A keeper of status items on a connection of its own, as a desktop's panel would be.
class FakeWatcher : public QObject, protected QDBusContext {
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.kde.StatusNotifierWatcher")
    Q_PROPERTY(bool IsStatusNotifierHostRegistered READ hasHost)

public:
    explicit FakeWatcher(const QDBusConnection& bus, bool hasHost = true);

    /// The watcher leaves the bus at once.
    ~FakeWatcher() override;

    bool hasHost() const { return m_hasHost; }

    /// A host comes or goes.
    void setHost(bool present);

    /// How many of the next registrations are refused.
    void refuse(int registrations) { m_refusals = registrations; }

    /// What was registered, in order, refused attempts left out.
    QStringList registered() const { return m_registered; }

    /// How many registrations were refused.
    int refused() const { return m_refused; }

public Q_SLOTS:
    void RegisterStatusNotifierItem(const QString& service);

Q_SIGNALS:
    void StatusNotifierHostRegistered();
    void StatusNotifierHostUnregistered();

private:
    QDBusConnection m_bus;
    bool m_hasHost;
    int m_refusals = 0;
    int m_refused = 0;
    QStringList m_registered;
};

} // namespace lumora::tests

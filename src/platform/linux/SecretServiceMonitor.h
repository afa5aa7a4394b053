#pragma once

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusObjectPath>
#include <QMap>
#include <QObject>

namespace lumora {

/// The attributes by which the Secret Service finds an item.
using SecretAttributes = QMap<QString, QString>;

/// Listens to what happens at the Secret Service, without ever waiting for it or starting it. It
/// never learns any secret.
class SecretServiceMonitor final : public QObject {
    Q_OBJECT

public:
    explicit SecretServiceMonitor(QDBusConnection bus);

Q_SIGNALS:
    void serviceAppeared();
    void serviceGone();

    /// The collection at `path` is locked, or no longer so. May come again for the same state.
    void lockReported(QString path, bool locked);

    /// Somebody, perhaps this program, added or changed the item that has `attributes`.
    void itemTouched(SecretAttributes attributes);

private Q_SLOTS:
    void ownerChanged(const QString& name, const QString& oldOwner, const QString& newOwner);
    void askForAttributes(const QDBusObjectPath& item);
    void askForLock(const QDBusObjectPath& collection);
    void propertiesChanged(const QDBusMessage& message);

private:
    void watchItemsAndCollections();

    QDBusConnection m_bus;
};

} // namespace lumora

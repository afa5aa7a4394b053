#pragma once

#include <QDBusConnection>
#include <QDBusMessage>
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

    /// Asks the service something simple, to hear when it answers, however long that takes.
    void waitForAnswer();

Q_SIGNALS:
    void serviceAppeared();
    void serviceGone();

    /// It has answered what waitForAnswer() asked.
    void serviceAnswered();

    /// The collection at `path` is not locked. May come again for the same state.
    void unlockReported(QString path);

    /// Somebody, perhaps this program, added, changed or unlocked the item that has `attributes`.
    void itemTouched(SecretAttributes attributes);

private Q_SLOTS:
    void ownerChanged(const QString& name, const QString& oldOwner, const QString& newOwner);
    void itemSignalled(const QDBusMessage& message);
    void collectionSignalled(const QDBusMessage& message);
    void propertiesChanged(const QDBusMessage& message);

private:
    void watchItemsAndCollections();
    void askForAttributes(const QString& itemPath);
    void askForLock(const QString& collectionPath);

    QDBusConnection m_bus;
};

} // namespace lumora

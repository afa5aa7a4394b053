#include "platform/linux/SecretServiceMonitor.h"

#include "platform/linux/SecretServiceNames.h"

#include <QDBusArgument>
#include <QDBusPendingReply>
#include <QDBusServiceWatcher>
#include <QDBusVariant>

using namespace Qt::Literals::StringLiterals;

namespace lumora {

namespace {

const QString propertiesInterface = u"org.freedesktop.DBus.Properties"_s;

} // namespace

SecretServiceMonitor::SecretServiceMonitor(QDBusConnection bus)
    : m_bus(std::move(bus)) {
    auto* const watcher = new QDBusServiceWatcher(
        secretService::name, m_bus, QDBusServiceWatcher::WatchForOwnerChange, this);
    connect(
        watcher, &QDBusServiceWatcher::serviceOwnerChanged, this,
        &SecretServiceMonitor::ownerChanged);
    watchItemsAndCollections();
}

void SecretServiceMonitor::watchItemsAndCollections() {
    const auto listen = [this](const QString& interface, const QString& signal, const char* slot) {
        m_bus.connect(secretService::name, {}, interface, signal, this, slot);
    };
    const char* const itemSlot = SLOT(askForAttributes(QDBusObjectPath));
    listen(secretService::collectionInterface, u"ItemCreated"_s, itemSlot);
    listen(secretService::collectionInterface, u"ItemChanged"_s, itemSlot);
    // Services tell of locking by the one signal, by the other, or by both.
    const char* const collectionSlot = SLOT(askForLock(QDBusObjectPath));
    listen(secretService::serviceInterface, u"CollectionChanged"_s, collectionSlot);
    listen(secretService::serviceInterface, u"CollectionCreated"_s, collectionSlot);
    listen(propertiesInterface, u"PropertiesChanged"_s, SLOT(propertiesChanged(QDBusMessage)));
}

void SecretServiceMonitor::ownerChanged(
    const QString&, const QString& oldOwner, const QString& newOwner) {
    if (!oldOwner.isEmpty())
        Q_EMIT serviceGone();
    if (!newOwner.isEmpty())
        Q_EMIT serviceAppeared();
}

void SecretServiceMonitor::askForAttributes(const QDBusObjectPath& item) {
    callSecretService(
        m_bus, this, item.path(), propertiesInterface, u"Get"_s,
        {secretService::itemInterface, u"Attributes"_s}, [this](const QDBusPendingCall& call) {
            const QDBusPendingReply<QDBusVariant> reply = call;
            if (!reply.isError()) // otherwise it is already gone again
                Q_EMIT itemTouched(qdbus_cast<SecretAttributes>(reply.value().variant()));
        });
}

void SecretServiceMonitor::askForLock(const QDBusObjectPath& collection) {
    const QString path = collection.path();
    callSecretService(
        m_bus, this, path, propertiesInterface, u"Get"_s,
        {secretService::collectionInterface, u"Locked"_s},
        [this, path](const QDBusPendingCall& call) {
            const QDBusPendingReply<QDBusVariant> reply = call;
            if (!reply.isError())
                Q_EMIT lockReported(path, reply.value().variant().toBool());
        });
}

void SecretServiceMonitor::propertiesChanged(const QDBusMessage& message) {
    const QVariantList arguments = message.arguments();
    if (arguments.size() < 3 || arguments[0].toString() != secretService::collectionInterface)
        return;
    const auto changed = qdbus_cast<QVariantMap>(arguments[1]);
    if (const auto locked = changed.constFind(u"Locked"_s); locked != changed.cend())
        Q_EMIT lockReported(message.path(), locked->toBool());
    else if (arguments[2].toStringList().contains(u"Locked"_s))
        askForLock(QDBusObjectPath(message.path()));
}

} // namespace lumora

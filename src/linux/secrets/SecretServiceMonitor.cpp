#include "linux/secrets/SecretServiceMonitor.h"

#include "linux/secrets/SecretServiceNames.h"

#include <QDBusArgument>
#include <QDBusObjectPath>
#include <QDBusServiceWatcher>
#include <QDBusVariant>

using namespace Qt::Literals::StringLiterals;

namespace lumora {

namespace {

const QString propertiesInterface = u"org.freedesktop.DBus.Properties"_s;

/// The map in `value`, empty when there is none with this signature: the bus library takes whatever
/// there is for one, and reads beyond it.
template <typename Map>
Map mapIn(const QVariant& value, QStringView signature) {
    const bool isOne = value.value<QDBusArgument>().currentSignature() == signature;
    return isOne ? qdbus_cast<Map>(value) : Map();
}

QVariantMap propertiesIn(const QVariant& value) {
    return mapIn<QVariantMap>(value, u"a{sv}");
}

QString firstPath(const QDBusMessage& message) {
    return message.arguments().value(0).value<QDBusObjectPath>().path();
}

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
    // Slots take whole messages: QtDBus may not know its other types by name before their first
    // use, and silently connects no slot that takes a type it does not know.
    const char* const itemSlot = SLOT(itemSignalled(QDBusMessage));
    listen(secretService::collectionInterface, u"ItemCreated"_s, itemSlot);
    listen(secretService::collectionInterface, u"ItemChanged"_s, itemSlot);
    // Services tell of locking by the one signal, by the other, or by both.
    const char* const collectionSlot = SLOT(collectionSignalled(QDBusMessage));
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

void SecretServiceMonitor::waitForAnswer() {
    callSecretService(
        m_bus, this, secretService::path, propertiesInterface, u"Get"_s,
        {secretService::serviceInterface, u"Collections"_s}, [this](const QDBusPendingCall& call) {
            if (!call.isError())
                Q_EMIT serviceAnswered();
        });
}

void SecretServiceMonitor::itemSignalled(const QDBusMessage& message) {
    askForAttributes(firstPath(message));
}

void SecretServiceMonitor::collectionSignalled(const QDBusMessage& message) {
    askForLock(firstPath(message));
}

void SecretServiceMonitor::askForAttributes(const QString& itemPath) {
    callSecretService(
        m_bus, this, itemPath, propertiesInterface, u"GetAll"_s, {secretService::itemInterface},
        [this](const QDBusPendingCall& call) {
            // After an error there is nothing in it: the item is already gone again.
            const QVariantMap item = propertiesIn(call.reply().arguments().value(0));
            const auto attributes = mapIn<SecretAttributes>(item.value(u"Attributes"_s), u"a{ss}");
            if (!attributes.isEmpty() && !item.value(u"Locked"_s).toBool())
                Q_EMIT itemTouched(attributes);
        });
}

void SecretServiceMonitor::askForLock(const QString& collectionPath) {
    callSecretService(
        m_bus, this, collectionPath, propertiesInterface, u"Get"_s,
        {secretService::collectionInterface, u"Locked"_s},
        [this, collectionPath](const QDBusPendingCall& call) {
            const auto isLocked = call.reply().arguments().value(0).value<QDBusVariant>().variant();
            if (!call.isError() && !isLocked.toBool())
                Q_EMIT unlockReported(collectionPath);
        });
}

void SecretServiceMonitor::propertiesChanged(const QDBusMessage& message) {
    const QVariantList arguments = message.arguments();
    if (arguments.size() < 3 || arguments[0].toString() != secretService::collectionInterface)
        return;
    const auto locked = propertiesIn(arguments[1]).value(u"Locked"_s);
    if (locked.isValid() && !locked.toBool())
        Q_EMIT unlockReported(message.path());
    else if (arguments[2].toStringList().contains(u"Locked"_s))
        askForLock(message.path());
}

} // namespace lumora

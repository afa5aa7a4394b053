#pragma once

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QString>

#include <utility>

namespace lumora {

/// How the Secret Service and its parts are called on the bus.
namespace secretService {

inline const QString name = QStringLiteral("org.freedesktop.secrets");
inline const QString path = QStringLiteral("/org/freedesktop/secrets");
inline const QString serviceInterface = QStringLiteral("org.freedesktop.Secret.Service");
inline const QString collectionInterface = QStringLiteral("org.freedesktop.Secret.Collection");
inline const QString itemInterface = QStringLiteral("org.freedesktop.Secret.Item");
inline const QString promptInterface = QStringLiteral("org.freedesktop.Secret.Prompt");

} // namespace secretService

/// Calls a method of the object at `path` and hands the finished call to `then`, unless `context`
/// is gone by then. The service is not started for it.
template <typename Then>
void callSecretService(
    QDBusConnection bus, QObject* context, const QString& path, const QString& interface,
    const QString& method, const QVariantList& arguments, Then then) {
    QDBusMessage call =
        QDBusMessage::createMethodCall(secretService::name, path, interface, method);
    call.setArguments(arguments);
    call.setAutoStartService(false);
    auto* const watcher = new QDBusPendingCallWatcher(bus.asyncCall(call), context);
    QObject::connect(
        watcher, &QDBusPendingCallWatcher::finished, context, [watcher, then = std::move(then)] {
            watcher->deleteLater();
            then(*watcher);
        });
}

} // namespace lumora

#include "linux/notifications/NotificationServer.h"

#include <QDBusPendingCallWatcher>

#include <memory>
#include <utility>

using namespace Qt::Literals::StringLiterals;

namespace lumora {

namespace {

const QString serverName = u"org.freedesktop.Notifications"_s;
const QString serverPath = u"/org/freedesktop/Notifications"_s;

// The bus itself answers at once.
constexpr std::chrono::seconds askingPatience{25};

QDBusMessage serverCall(const QString& service, const QString& method) {
    return QDBusMessage::createMethodCall(service, serverPath, serverName, method);
}

/// The notification that a signal is about; the sender is its server.
ShownNotification subject(const QDBusMessage& message) {
    return {.server = message.service(), .id = message.arguments().value(0).toUInt()};
}

} // namespace

NotificationServer::NotificationServer(const QDBusConnection& bus)
    : m_bus(bus) {}

// Listening takes an exchange with the bus, and nobody asks before the status item is shown.
void NotificationServer::listen() {
    if (std::exchange(m_listening, true) || !m_bus.isConnected())
        return;
    m_watch.setConnection(m_bus);
    m_watch.setWatchMode(QDBusServiceWatcher::WatchForOwnerChange);
    m_watch.addWatchedService(serverName);
    connect(
        &m_watch, &QDBusServiceWatcher::serviceOwnerChanged, this,
        [this](const QString& /*name*/, const QString& /*oldOwner*/, const QString& newOwner) {
            m_owner = newOwner;
            Q_EMIT changed();
            if (!newOwner.isEmpty())
                Q_EMIT appeared();
        });
    // Answers do not say who gave them, in every version of Qt. This one comes before those of the
    // server, and of a server that comes later the watch tells first.
    auto call = QDBusMessage::createMethodCall(
        u"org.freedesktop.DBus"_s, u"/org/freedesktop/DBus"_s, u"org.freedesktop.DBus"_s,
        u"GetNameOwner"_s);
    ask(call << serverName, askingPatience, [this](const QDBusMessage& answer) {
        if (answer.type() == QDBusMessage::ReplyMessage)
            m_owner = answer.arguments().value(0).toString();
    });
    // The service is named, so that every signal comes once and from no other program.
    const auto connectTo = [this](const QString& signal, const char* slot) {
        m_bus.connect(serverName, serverPath, serverName, signal, this, slot);
    };
    connectTo(u"ActionInvoked"_s, SLOT(onActionInvoked(QDBusMessage)));
    connectTo(u"ActivationToken"_s, SLOT(onActivationToken(QDBusMessage)));
    connectTo(u"NotificationClosed"_s, SLOT(onNotificationClosed(QDBusMessage)));
}

void NotificationServer::askAbilities(
    std::chrono::milliseconds patience,
    const std::function<void(const std::optional<NotificationAbilities>&)>& onAnswer) {
    // Servers answer in turn: one that says at all who it is has done so before the rest.
    const auto program = std::make_shared<QString>();
    const auto who = serverCall(serverName, u"GetServerInformation"_s);
    ask(who, patience, [program](const QDBusMessage& answer) {
        if (answer.type() == QDBusMessage::ReplyMessage)
            *program = answer.arguments().value(0).toString();
    });
    const auto call = serverCall(serverName, u"GetCapabilities"_s);
    ask(call, patience, [this, onAnswer, program](const QDBusMessage& answer) {
        if (answer.type() != QDBusMessage::ReplyMessage)
            return onAnswer(std::nullopt);
        onAnswer(NotificationAbilities{
            .server = m_owner,
            .program = *program,
            .capabilities = answer.arguments().value(0).toStringList(),
        });
    });
}

void NotificationServer::notify(
    const QString& server, const QVariantList& arguments, std::chrono::milliseconds patience,
    const std::function<void(const std::optional<ShownNotification>&)>& onAnswer) {
    auto call = serverCall(server, u"Notify"_s);
    call.setArguments(arguments);
    ask(call, patience, [server, onAnswer](const QDBusMessage& answer) {
        if (answer.type() != QDBusMessage::ReplyMessage)
            return onAnswer(std::nullopt);
        onAnswer(ShownNotification{.server = server, .id = answer.arguments().value(0).toUInt()});
    });
}

void NotificationServer::ask(
    const QDBusMessage& call, std::chrono::milliseconds patience,
    const std::function<void(const QDBusMessage&)>& onAnswer) {
    listen();
    // A call on a bus that is not there would never end.
    const auto answer = m_bus.isConnected()
                            ? m_bus.asyncCall(call, int(patience.count()))
                            : QDBusPendingCall::fromError(QDBusError(QDBusError::Disconnected, {}));
    auto* pending = new QDBusPendingCallWatcher(answer, this);
    connect(pending, &QDBusPendingCallWatcher::finished, this, [pending, onAnswer] {
        pending->deleteLater();
        onAnswer(pending->reply());
    });
}

void NotificationServer::onActionInvoked(const QDBusMessage& message) {
    Q_EMIT actionInvoked(subject(message));
}

void NotificationServer::onActivationToken(const QDBusMessage& message) {
    Q_EMIT activationToken(subject(message), message.arguments().value(1).toString().toUtf8());
}

void NotificationServer::onNotificationClosed(const QDBusMessage& message) {
    Q_EMIT closed(subject(message));
}

} // namespace lumora

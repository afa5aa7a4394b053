#include "linux/commands/StatusSubscription.h"

#include "linux/commands/CommandServer.h"

#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>

#include <utility>

using namespace Qt::Literals::StringLiterals;

namespace lumora {

StatusSubscription::StatusSubscription(QDBusConnection bus, Extent extent)
    : m_bus(std::move(bus))
    , m_watcher(commandService, m_bus, QDBusServiceWatcher::WatchForOwnerChange) {
    connect(&m_watcher, &QDBusServiceWatcher::serviceOwnerChanged, this, &StatusSubscription::ask);
    const QString local = u"org.freedesktop.DBus.Local"_s;
    m_bus.connect(
        {}, u"/org/freedesktop/DBus/Local"_s, local, u"Disconnected"_s, this, SIGNAL(lost()));
    hear(u"LabelChanged"_s);
    if (extent == Extent::Everything)
        hear(u"DetailsChanged"_s);
    ask();
}

void StatusSubscription::hear(const QString& signal) {
    m_bus.connect(commandService, commandPath, commandInterface, signal, this, SLOT(ask()));
}

void StatusSubscription::ask() {
    if (m_asking) {
        m_askAgain = true;
        return;
    }
    m_asking = true;
    auto message =
        QDBusMessage::createMethodCall(commandService, commandPath, commandInterface, u"Status"_s);
    message.setAutoStartService(false);
    auto* const call = new QDBusPendingCallWatcher(m_bus.asyncCall(message), this);
    connect(call, &QDBusPendingCallWatcher::finished, this, &StatusSubscription::take);
}

void StatusSubscription::take(QDBusPendingCallWatcher* call) {
    call->deleteLater();
    m_asking = false;
    const QDBusPendingReply<QString> reply = *call;
    Q_EMIT changed(reply.isError() ? std::nullopt : std::optional(reply.value()));
    if (std::exchange(m_askAgain, false))
        ask();
}

} // namespace lumora

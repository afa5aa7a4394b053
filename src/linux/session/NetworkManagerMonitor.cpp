#include "linux/session/NetworkManagerMonitor.h"

#include <QMetaMethod>

#include <utility>

using namespace Qt::Literals::StringLiterals;

namespace lumora {

namespace {

// Connected to the site's network; the one state above it is "to the internet".
constexpr uint connectedToSite = 60;

} // namespace

NetworkManagerMonitor::NetworkManagerMonitor(Bus bus)
    : m_bus(std::move(bus)) {}

void NetworkManagerMonitor::connectNotify(const QMetaMethod& signal) {
    if (!m_bus || signal != QMetaMethod::fromSignal(&NetworkMonitor::cameUp))
        return;
    QDBusConnection bus = std::exchange(m_bus, nullptr)();
    // The service is named so that no other program on the bus can fake a network; and the slot
    // takes the whole message, because QtDBus aborts the program when a value has another type than
    // the slot's.
    bus.connect(
        u"org.freedesktop.NetworkManager"_s, u"/org/freedesktop/NetworkManager"_s,
        u"org.freedesktop.NetworkManager"_s, u"StateChanged"_s, this,
        SLOT(stateChanged(QDBusMessage)));
}

void NetworkManagerMonitor::stateChanged(const QDBusMessage& message) {
    const QVariant state = message.arguments().value(0);
    if (state.typeId() == QMetaType::UInt && state.toUInt() >= connectedToSite)
        Q_EMIT cameUp();
}

} // namespace lumora

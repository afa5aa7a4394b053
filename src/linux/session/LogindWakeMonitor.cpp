#include "linux/session/LogindWakeMonitor.h"

#include <QMetaMethod>

#include <utility>

using namespace Qt::Literals::StringLiterals;

namespace lumora {

LogindWakeMonitor::LogindWakeMonitor(Bus bus)
    : m_bus(std::move(bus)) {}

void LogindWakeMonitor::connectNotify(const QMetaMethod& signal) {
    if (!m_bus || signal != QMetaMethod::fromSignal(&WakeMonitor::woke))
        return;
    QDBusConnection bus = std::exchange(m_bus, nullptr)();
    // The service is named so that no other program on the bus can fake a wake; and the slot takes
    // the whole message, because QtDBus aborts the program when a value has another type than the
    // slot's.
    bus.connect(
        u"org.freedesktop.login1"_s, u"/org/freedesktop/login1"_s,
        u"org.freedesktop.login1.Manager"_s, u"PrepareForSleep"_s, this,
        SLOT(prepareForSleep(QDBusMessage)));
}

void LogindWakeMonitor::prepareForSleep(const QDBusMessage& message) {
    const QVariant goingToSleep = message.arguments().value(0);
    if (goingToSleep.typeId() == QMetaType::Bool && !goingToSleep.toBool())
        Q_EMIT woke();
}

} // namespace lumora

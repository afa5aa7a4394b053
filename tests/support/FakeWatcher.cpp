#include "support/FakeWatcher.h"

#include <stdexcept>

using namespace Qt::Literals::StringLiterals;

namespace lumora::tests {

FakeWatcher::FakeWatcher(const QDBusConnection& bus, bool hasHost)
    : m_bus(bus)
    , m_hasHost(hasHost) {
    const bool here = m_bus.registerObject(
                          u"/StatusNotifierWatcher"_s, this,
                          QDBusConnection::ExportAllSlots | QDBusConnection::ExportAllSignals |
                              QDBusConnection::ExportAllProperties) &&
                      m_bus.registerService(u"org.kde.StatusNotifierWatcher"_s);
    if (!here)
        throw std::runtime_error("the fake watcher found no place on the bus");
}

FakeWatcher::~FakeWatcher() {
    const QString name = m_bus.name();
    m_bus = QDBusConnection(QString());
    QDBusConnection::disconnectFromBus(name);
}

void FakeWatcher::setHost(bool present) {
    m_hasHost = present;
    if (present)
        Q_EMIT StatusNotifierHostRegistered();
    else
        Q_EMIT StatusNotifierHostUnregistered();
}

void FakeWatcher::RegisterStatusNotifierItem(const QString& service) {
    if (m_refusals > 0) {
        --m_refusals;
        ++m_refused;
        sendErrorReply(QDBusError::UnknownObject, u"not ready"_s);
        return;
    }
    m_registered += service;
}

} // namespace lumora::tests

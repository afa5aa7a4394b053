#include "fakes/FakeNotificationServer.h"

#include <stdexcept>
#include <utility>

using namespace Qt::Literals::StringLiterals;

namespace lumora::tests {

FakeNotificationServer::FakeNotificationServer(
    const QDBusConnection& bus, QString heldMethod, bool announced)
    : m_bus(bus)
    , m_heldMethod(std::move(heldMethod)) {
    const bool here = m_bus.registerObject(
                          u"/org/freedesktop/Notifications"_s, this,
                          QDBusConnection::ExportAllSlots | QDBusConnection::ExportAllSignals) &&
                      (!announced || m_bus.registerService(u"org.freedesktop.Notifications"_s));
    if (!here)
        throw std::runtime_error("the fake notification server found no place on the bus");
}

FakeNotificationServer::~FakeNotificationServer() {
    const QString name = m_bus.name();
    m_bus = QDBusConnection(QString());
    QDBusConnection::disconnectFromBus(name);
}

void FakeNotificationServer::release() {
    m_heldMethod.clear();
    for (const Held& held : std::exchange(m_held, {}))
        m_bus.send(held.call.createReply(held.answer));
}

QStringList FakeNotificationServer::GetCapabilities() {
    ++capabilityCalls;
    if (isHeld(u"GetCapabilities"_s, capabilities))
        return {};
    return capabilities;
}

QString FakeNotificationServer::GetServerInformation(
    QString& vendor, QString& version, QString& protocol) const {
    vendor = u"Lumora"_s;
    version = u"1"_s;
    protocol = u"1.2"_s;
    return program;
}

uint FakeNotificationServer::Notify(
    const QString& /*appName*/, uint replacesId, const QString& /*appIcon*/, const QString& summary,
    const QString& body, const QStringList& actions, const QVariantMap& hints, int /*timeout*/) {
    ++notifyCalls;
    if (m_refusals > 0) {
        --m_refusals;
        sendErrorReply(QDBusError::LimitsExceeded, u"too many"_s);
        return 0;
    }
    shown.append({replacesId, summary, body, actions, hints});
    const uint id = replacesId > 0 && !m_renumbers ? replacesId : uint(shown.size());
    return isHeld(u"Notify"_s, id) ? 0 : id;
}

bool FakeNotificationServer::isHeld(const QString& method, const QVariant& laterAnswer) {
    if (method != m_heldMethod)
        return false;
    setDelayedReply(true);
    m_held.append({message(), laterAnswer});
    return true;
}

} // namespace lumora::tests

#include "platform/linux/PortalAppearance.h"

#include "platform/linux/SettingsMessages.h"

#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>
#include <QDBusVariant>

using namespace Qt::Literals::StringLiterals;

namespace lumora {

namespace {

const QString portalName = u"org.freedesktop.portal.Desktop"_s;
const QString portalPath = u"/org/freedesktop/portal/desktop"_s;
const QString portalInterface = u"org.freedesktop.portal.Settings"_s;
const QString appearanceGroup = u"org.freedesktop.appearance"_s;
const QString colorSchemeKey = u"color-scheme"_s;

std::optional<DesktopAppearance::Preference> preferenceIn(const QVariant& colorScheme) {
    switch (unwrapped(colorScheme).toUInt()) {
    case 1:
        return DesktopAppearance::Preference::Dark;
    case 2:
        return DesktopAppearance::Preference::Light;
    default:
        return std::nullopt;
    }
}

} // namespace

PortalAppearance::PortalAppearance(const QDBusConnection& bus)
    : m_bus(bus) {
    if (!m_bus.isConnected())
        return;
    m_services.setConnection(m_bus);
    m_services.setWatchMode(QDBusServiceWatcher::WatchForRegistration);
    m_services.addWatchedService(portalName);
    connect(&m_services, &QDBusServiceWatcher::serviceRegistered, this, &PortalAppearance::read);
    // The message is taken as it is: slots with a variant parameter are not called unless the bus
    // library happens to know its type already.
    m_bus.connect(
        portalName, portalPath, portalInterface, u"SettingChanged"_s, this,
        SLOT(onSetting(QDBusMessage)));
    read();
}

void PortalAppearance::read() {
    QDBusMessage call =
        QDBusMessage::createMethodCall(portalName, portalPath, portalInterface, u"Read"_s);
    call.setAutoStartService(false);
    call << appearanceGroup << colorSchemeKey;
    auto* pending = new QDBusPendingCallWatcher(m_bus.asyncCall(call), this);
    connect(pending, &QDBusPendingCallWatcher::finished, this, [this, pending] {
        pending->deleteLater();
        if (const QDBusPendingReply<QDBusVariant> answer = *pending; answer.isValid())
            setWishes({.colorScheme = preferenceIn(answer.value().variant())});
    });
}

void PortalAppearance::onSetting(const QDBusMessage& change) {
    if (isAbout(change, appearanceGroup, colorSchemeKey))
        setWishes({.colorScheme = preferenceIn(valueIn(change))});
}

} // namespace lumora

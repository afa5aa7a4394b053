#include "linux/session/SessionProbe.h"

#include "linux/appearance/BarTheme.h"
#include "linux/tray/StatusAreaHost.h"

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusVariant>

using namespace Qt::Literals::StringLiterals;

namespace lumora {

namespace {

constexpr int answerLimit = 1000; // milliseconds

/// What a method answers; absent where nobody does, or it fails.
std::optional<QVariantList>
ask(const QDBusConnection& bus, const QString& service, const QString& path,
    const QString& interfaceName, const QString& method, const QVariantList& arguments = {}) {
    auto message = QDBusMessage::createMethodCall(service, path, interfaceName, method);
    message.setArguments(arguments);
    const auto reply = bus.call(message, QDBus::Block, answerLimit);
    if (reply.type() != QDBusMessage::ReplyMessage)
        return std::nullopt;
    return reply.arguments();
}

std::optional<QVariantList>
askBus(const QDBusConnection& bus, const QString& method, const QString& name) {
    const QString itself = u"org.freedesktop.DBus"_s;
    return ask(bus, itself, u"/org/freedesktop/DBus"_s, itself, method, {name});
}

void probeTray(const QDBusConnection& bus, SessionProbe& probe) {
    const auto owner = askBus(bus, u"GetNameOwner"_s, u"org.kde.StatusNotifierWatcher"_s);
    probe.hasTray = owner.has_value();
    if (!owner)
        return;
    const QString name = owner->value(0).toString();
    if (const auto process = askBus(bus, u"GetConnectionUnixProcessID"_s, name))
        probe.trayProcess = processName(process->value(0).toUInt());
}

void probeNotifications(const QDBusConnection& bus, SessionProbe& probe) {
    const QString service = u"org.freedesktop.Notifications"_s;
    const QString path = u"/org/freedesktop/Notifications"_s;
    const auto about = ask(bus, service, path, service, u"GetServerInformation"_s);
    const auto can = ask(bus, service, path, service, u"GetCapabilities"_s);
    probe.hasNotifications = about || can;
    if (about)
        probe.notificationServer = about->value(0).toString();
    if (can)
        probe.notifiesWithActions = can->value(0).toStringList().contains(u"actions"_s);
}

void probePortal(const QDBusConnection& bus, SessionProbe& probe) {
    const auto answer =
        ask(bus, u"org.freedesktop.portal.Desktop"_s, u"/org/freedesktop/portal/desktop"_s,
            u"org.freedesktop.portal.Settings"_s, u"Read"_s,
            {u"org.freedesktop.appearance"_s, u"color-scheme"_s});
    if (!answer)
        return;
    QVariant value = answer->value(0);
    while (value.canConvert<QDBusVariant>())
        value = value.value<QDBusVariant>().variant();
    if (value.toUInt() == 1)
        probe.portal = DesktopAppearance::Preference::Dark;
    else if (value.toUInt() == 2)
        probe.portal = DesktopAppearance::Preference::Light;
}

} // namespace

SessionProbe probeSession(const QString& desktop) {
    SessionProbe probe;
    probe.barThemeIsDark = BarTheme(desktop).isDark(false);
    const auto bus = QDBusConnection::sessionBus();
    probe.hasBus = bus.isConnected();
    if (!probe.hasBus)
        return probe;
    probeTray(bus, probe);
    probeNotifications(bus, probe);
    probePortal(bus, probe);
    return probe;
}

bool hasWakeService() {
    const auto bus = QDBusConnection::systemBus();
    return bus.isConnected() && askBus(bus, u"GetNameOwner"_s, u"org.freedesktop.login1"_s);
}

} // namespace lumora

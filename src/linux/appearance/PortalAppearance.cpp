#include "linux/appearance/PortalAppearance.h"

#include "linux/appearance/SettingsMessages.h"

#include <QDBusArgument>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>
#include <QDBusVariant>

#include <algorithm>
#include <initializer_list>

using namespace Qt::Literals::StringLiterals;

namespace lumora {

namespace {

const QString portalName = u"org.freedesktop.portal.Desktop"_s;
const QString portalPath = u"/org/freedesktop/portal/desktop"_s;
const QString portalInterface = u"org.freedesktop.portal.Settings"_s;
const QString appearanceGroup = u"org.freedesktop.appearance"_s;
const QString gnomeGroup = u"org.gnome.desktop.interface"_s;
const QString plasmaGroup = u"org.kde.kdeglobals.KDE"_s;
const QString colorSchemeKey = u"color-scheme"_s;
const QString accentKey = u"accent-color"_s;
const QString reducedMotionKey = u"reduced-motion"_s;
const QString animationsKey = u"enable-animations"_s;
const QString animationFactorKey = u"AnimationDurationFactor"_s;

/// Every setting that is followed. Each desktop has its own against motion, and the common one is
/// younger than most of them.
const QList<std::pair<QString, QString>> followedSettings{
    {appearanceGroup, colorSchemeKey},   {appearanceGroup, accentKey},
    {appearanceGroup, reducedMotionKey}, {gnomeGroup, animationsKey},
    {plasmaGroup, animationFactorKey},
};

std::optional<DesktopAppearance::Preference> preferenceIn(const QVariant& colorScheme) {
    switch (colorScheme.toUInt()) {
    case 1:
        return DesktopAppearance::Preference::Dark;
    case 2:
        return DesktopAppearance::Preference::Light;
    default:
        return std::nullopt;
    }
}

/// A part out of range says that the user has no accent of their own.
std::optional<DesktopColor> accentIn(const QVariant& value) {
    const auto argument = value.value<QDBusArgument>();
    if (argument.currentSignature() != u"(ddd)")
        return std::nullopt;
    DesktopColor color;
    argument.beginStructure();
    argument >> color.red >> color.green >> color.blue;
    argument.endStructure();
    const auto isPart = [](double part) { return part >= 0 && part <= 1; };
    if (!std::ranges::all_of(std::initializer_list{color.red, color.green, color.blue}, isPart))
        return std::nullopt;
    return color;
}

/// Whether a setting with this value asks for less motion; one that means nothing does not.
bool isAgainstMotion(const QString& key, const QVariant& value) {
    if (key == reducedMotionKey)
        return value.toUInt() == 1;
    if (key == animationsKey)
        return value.metaType() == QMetaType::fromType<bool>() && !value.toBool();
    bool isNumber = false;
    const double factor = value.toDouble(&isNumber);
    return isNumber && factor == 0;
}

} // namespace

PortalAppearance::PortalAppearance(const QDBusConnection& bus)
    : m_bus(bus) {
    if (!m_bus.isConnected())
        return;
    m_services.setConnection(m_bus);
    m_services.setWatchMode(QDBusServiceWatcher::WatchForRegistration);
    m_services.addWatchedService(portalName);
    connect(&m_services, &QDBusServiceWatcher::serviceRegistered, this, &PortalAppearance::readAll);
    // The message is taken as it is: slots with a variant parameter are not called unless the bus
    // library happens to know its type already.
    m_bus.connect(
        portalName, portalPath, portalInterface, u"SettingChanged"_s, this,
        SLOT(onSetting(QDBusMessage)));
    readAll();
}

void PortalAppearance::readAll() {
    for (const auto& [group, key] : followedSettings)
        read(group, key);
}

void PortalAppearance::read(const QString& group, const QString& key) {
    QDBusMessage call =
        QDBusMessage::createMethodCall(portalName, portalPath, portalInterface, u"Read"_s);
    call.setAutoStartService(false);
    call << group << key;
    auto* pending = new QDBusPendingCallWatcher(m_bus.asyncCall(call), this);
    connect(pending, &QDBusPendingCallWatcher::finished, this, [this, pending, group, key] {
        pending->deleteLater();
        if (const QDBusPendingReply<QDBusVariant> answer = *pending; answer.isValid())
            apply(group, key, unwrapped(answer.value().variant()));
    });
}

void PortalAppearance::onSetting(const QDBusMessage& change) {
    for (const auto& [group, key] : followedSettings) {
        if (isAbout(change, group, key))
            apply(group, key, valueIn(change));
    }
}

void PortalAppearance::apply(const QString& group, const QString& key, const QVariant& value) {
    Wishes changed = wishes();
    if (key == colorSchemeKey) {
        changed.colorScheme = preferenceIn(value);
    } else if (key == accentKey) {
        changed.accent = accentIn(value);
    } else {
        if (isAgainstMotion(key, value))
            m_stilling.insert(group);
        else
            m_stilling.remove(group);
        // A setting that nobody has touched allows motion; that is no wish for it.
        changed.animations = m_stilling.isEmpty() ? std::nullopt : std::optional(false);
    }
    setWishes(changed);
}

} // namespace lumora

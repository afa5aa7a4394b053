#include "platform/linux/PanelToneMonitor.h"

#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>
#include <QDBusVariant>
#include <QEvent>
#include <QGuiApplication>
#include <QPalette>

using namespace Qt::Literals::StringLiterals;

namespace lumora {

namespace {

QString portalName() {
    return u"org.freedesktop.portal.Desktop"_s;
}

QString portalPath() {
    return u"/org/freedesktop/portal/desktop"_s;
}

QString portalInterface() {
    return u"org.freedesktop.portal.Settings"_s;
}

QString xfceName() {
    return u"org.xfce.Xfconf"_s;
}

QString xfcePath() {
    return u"/org/xfce/Xfconf"_s;
}

// Both services tell of a change by group, key and value. The message is taken as it is: slots
// with a variant parameter are not called unless the bus library happens to know its type already.
bool isAbout(const QDBusMessage& change, QStringView group, QStringView key) {
    const QVariantList arguments = change.arguments();
    return arguments.value(0).toString() == group && arguments.value(1).toString() == key;
}

// Variants come wrapped, those that the portal reads even twice.
QVariant unwrapped(QVariant value) {
    while (value.metaType() == QMetaType::fromType<QDBusVariant>())
        value = value.value<QDBusVariant>().variant();
    return value;
}

QVariant valueIn(const QDBusMessage& change) {
    return unwrapped(change.arguments().value(2));
}

std::optional<PanelEvidence::Preference> preferenceIn(const QVariant& colorScheme) {
    switch (unwrapped(colorScheme).toUInt()) {
    case 1:
        return PanelEvidence::Preference::Dark;
    case 2:
        return PanelEvidence::Preference::Light;
    default:
        return std::nullopt;
    }
}

bool paletteIsDark() {
    return QGuiApplication::palette().color(QPalette::Window).lightness() < 128;
}

} // namespace

PanelToneMonitor::PanelToneMonitor(
    const QDBusConnection& bus, const QString& desktop, QObject* parent)
    : QObject(parent)
    , m_bus(bus) {
    m_evidence.desktop = desktop;
    m_evidence.paletteIsDark = paletteIsDark();
    qApp->installEventFilter(this);
    if (!m_bus.isConnected())
        return;
    m_services.setConnection(m_bus);
    m_services.setWatchMode(QDBusServiceWatcher::WatchForRegistration);
    connect(
        &m_services, &QDBusServiceWatcher::serviceRegistered, this,
        [this](const QString& name) { name == portalName() ? readPortal() : readXfce(); });
    watchPortal();
    if (isXfce(desktop))
        watchXfce();
}

void PanelToneMonitor::watchPortal() {
    m_services.addWatchedService(portalName());
    m_bus.connect(
        portalName(), portalPath(), portalInterface(), u"SettingChanged"_s, this,
        SLOT(onPortalSetting(QDBusMessage)));
    readPortal();
}

void PanelToneMonitor::watchXfce() {
    m_services.addWatchedService(xfceName());
    m_bus.connect(
        xfceName(), xfcePath(), xfceName(), u"PropertyChanged"_s, this,
        SLOT(onXfceSetting(QDBusMessage)));
    m_bus.connect(
        xfceName(), xfcePath(), xfceName(), u"PropertyRemoved"_s, this,
        SLOT(onXfceSettingRemoved(QDBusMessage)));
    readXfce();
}

void PanelToneMonitor::readPortal() {
    QDBusMessage call =
        QDBusMessage::createMethodCall(portalName(), portalPath(), portalInterface(), u"Read"_s);
    call.setAutoStartService(false);
    call << u"org.freedesktop.appearance"_s << u"color-scheme"_s;
    auto* pending = new QDBusPendingCallWatcher(m_bus.asyncCall(call), this);
    connect(pending, &QDBusPendingCallWatcher::finished, this, [this, pending] {
        pending->deleteLater();
        if (const QDBusPendingReply<QDBusVariant> answer = *pending; answer.isValid())
            apply([&](PanelEvidence& evidence) {
                evidence.portal = preferenceIn(answer.value().variant());
            });
    });
}

void PanelToneMonitor::readXfce() {
    QDBusMessage call =
        QDBusMessage::createMethodCall(xfceName(), xfcePath(), xfceName(), u"GetProperty"_s);
    call.setAutoStartService(false);
    call << u"xfce4-panel"_s << u"/panels/dark-mode"_s;
    auto* pending = new QDBusPendingCallWatcher(m_bus.asyncCall(call), this);
    connect(pending, &QDBusPendingCallWatcher::finished, this, [this, pending] {
        pending->deleteLater();
        // An error is the usual answer for a setting that was never touched.
        if (const QDBusPendingReply<QDBusVariant> answer = *pending; answer.isValid())
            apply([&](PanelEvidence& evidence) {
                evidence.xfcePanelIsDark = answer.value().variant().toBool();
            });
    });
}

void PanelToneMonitor::onPortalSetting(const QDBusMessage& change) {
    if (isAbout(change, u"org.freedesktop.appearance", u"color-scheme"))
        apply([&](PanelEvidence& evidence) { evidence.portal = preferenceIn(valueIn(change)); });
}

void PanelToneMonitor::onXfceSetting(const QDBusMessage& change) {
    if (isAbout(change, u"xfce4-panel", u"/panels/dark-mode"))
        apply(
            [&](PanelEvidence& evidence) { evidence.xfcePanelIsDark = valueIn(change).toBool(); });
}

void PanelToneMonitor::onXfceSettingRemoved(const QDBusMessage& change) {
    if (isAbout(change, u"xfce4-panel", u"/panels/dark-mode"))
        apply([](PanelEvidence& evidence) { evidence.xfcePanelIsDark.reset(); });
}

bool PanelToneMonitor::eventFilter(QObject* watched, QEvent* event) {
    if (watched == qApp && event->type() == QEvent::ApplicationPaletteChange)
        apply([](PanelEvidence& evidence) { evidence.paletteIsDark = paletteIsDark(); });
    return QObject::eventFilter(watched, event);
}

void PanelToneMonitor::apply(const std::function<void(PanelEvidence&)>& edit) {
    const SymbolTone before = tone();
    edit(m_evidence);
    if (tone() != before)
        Q_EMIT toneChanged();
}

} // namespace lumora

#include "linux/appearance/PanelToneMonitor.h"

#include "linux/appearance/SettingsMessages.h"

#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>
#include <QDBusVariant>
#include <QEvent>
#include <QGuiApplication>
#include <QPalette>

using namespace Qt::Literals::StringLiterals;

namespace lumora {

namespace {

QString xfceName() {
    return u"org.xfce.Xfconf"_s;
}

QString xfcePath() {
    return u"/org/xfce/Xfconf"_s;
}

bool paletteIsDark() {
    return QGuiApplication::palette().color(QPalette::Window).lightness() < 128;
}

} // namespace

PanelToneMonitor::PanelToneMonitor(
    const QDBusConnection& bus, const QString& desktop, const DesktopAppearance& portal)
    : m_bus(bus)
    , m_evidence{
          .desktop = desktop,
          .portal = portal.colorScheme(),
          .xfcePanelIsDark = {},
          .paletteIsDark = paletteIsDark()} {
    qApp->installEventFilter(this);
    connect(&portal, &DesktopAppearance::changed, this, [this, &portal] {
        apply([&](PanelEvidence& evidence) { evidence.portal = portal.colorScheme(); });
    });
    if (m_bus.isConnected() && isXfce(desktop))
        watchXfce();
}

void PanelToneMonitor::watchXfce() {
    m_services.setConnection(m_bus);
    m_services.setWatchMode(QDBusServiceWatcher::WatchForRegistration);
    m_services.addWatchedService(xfceName());
    connect(
        &m_services, &QDBusServiceWatcher::serviceRegistered, this, &PanelToneMonitor::readXfce);
    m_bus.connect(
        xfceName(), xfcePath(), xfceName(), u"PropertyChanged"_s, this,
        SLOT(onXfceSetting(QDBusMessage)));
    m_bus.connect(
        xfceName(), xfcePath(), xfceName(), u"PropertyRemoved"_s, this,
        SLOT(onXfceSettingRemoved(QDBusMessage)));
    readXfce();
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

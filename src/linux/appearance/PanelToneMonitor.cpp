#include "linux/appearance/PanelToneMonitor.h"

#include "linux/appearance/SettingsMessages.h"
#include "platform/AppStorageBacked.h"
#include "platform/DesktopNames.h"

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

QString wishIn(const Preferences& preferences) {
    return AppStorageBacked(preferences, PreferenceKeys::barTone).wrappedValue();
}

} // namespace

PanelToneMonitor::PanelToneMonitor(
    const QDBusConnection& bus, const QString& desktop, const DesktopAppearance& windows,
    const Preferences& preferences, XdgFolders folders)
    : m_bus(bus)
    , m_theme(desktop, std::move(folders))
    , m_evidence{
          .wish = wishIn(preferences),
          .desktop = desktop,
          .themeIsDark = m_theme.isDark(paletteIsDark()),
          .portal = windows.colorScheme(),
          .xfcePanelIsDark = {},
          .paletteIsDark = paletteIsDark()} {
    qApp->installEventFilter(this);
    connect(&preferences, &Preferences::changed, this, [this, &preferences] {
        apply([&](PanelEvidence& evidence) { evidence.wish = wishIn(preferences); });
    });
    connect(&m_theme, &BarTheme::changed, this, &PanelToneMonitor::readTheme);
    connect(&windows, &DesktopAppearance::changed, this, [this, &windows] {
        apply([&](PanelEvidence& evidence) { evidence.portal = windows.colorScheme(); });
    });
    if (m_bus.isConnected() && namesDesktop(desktop, {"XFCE"_L1}))
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
        const QDBusPendingReply<QDBusVariant> answer = *pending;
        if (answer.isValid())
            setXfcePanelDark(answer.value().variant().toBool());
        else if (answer.error().name().startsWith(xfceName()))
            setXfcePanelDark(false); // it was never set: the panel is like the windows
    });
}

void PanelToneMonitor::onXfceSetting(const QDBusMessage& change) {
    if (isAbout(change, u"xfce4-panel", u"/panels/dark-mode"))
        setXfcePanelDark(valueIn(change).toBool());
}

void PanelToneMonitor::onXfceSettingRemoved(const QDBusMessage& change) {
    if (isAbout(change, u"xfce4-panel", u"/panels/dark-mode"))
        setXfcePanelDark(false);
}

void PanelToneMonitor::setXfcePanelDark(bool dark) {
    apply([dark](PanelEvidence& evidence) { evidence.xfcePanelIsDark = dark; });
}

bool PanelToneMonitor::eventFilter(QObject* watched, QEvent* event) {
    if (watched == qApp && event->type() == QEvent::ApplicationPaletteChange)
        readTheme();
    return QObject::eventFilter(watched, event);
}

void PanelToneMonitor::readTheme() {
    apply([this](PanelEvidence& evidence) {
        evidence.paletteIsDark = paletteIsDark();
        evidence.themeIsDark = m_theme.isDark(evidence.paletteIsDark);
    });
}

void PanelToneMonitor::apply(const std::function<void(PanelEvidence&)>& edit) {
    const SymbolTone before = tone();
    edit(m_evidence);
    if (tone() != before)
        Q_EMIT toneChanged();
}

} // namespace lumora

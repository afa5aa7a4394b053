#pragma once

#include "linux/appearance/BarTheme.h"
#include "linux/appearance/PanelTone.h"
#include "platform/BarAppearance.h"
#include "platform/Preferences.h"

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusServiceWatcher>

#include <functional>

namespace lumora {

/// Gathers what is known about the panel's colours, without waiting and without starting any
/// service for it, and tells when the symbol's tone changes.
class PanelToneMonitor final : public BarAppearance {
    Q_OBJECT

public:
    /// `desktop` is the session's XDG_CURRENT_DESKTOP. `windows` says which colours the user has
    /// chosen for them, `preferences` what they say of the bar; both outlive the monitor.
    PanelToneMonitor(
        const QDBusConnection& bus, const QString& desktop, const DesktopAppearance& windows,
        const Preferences& preferences, XdgFolders folders = XdgFolders::ofSession());

    SymbolTone tone() const override { return toneFor(m_evidence); }

    bool eventFilter(QObject* watched, QEvent* event) override;

private Q_SLOTS:
    void onXfceSetting(const QDBusMessage& change);
    void onXfceSettingRemoved(const QDBusMessage& change);

private:
    void watchXfce();
    void readXfce();
    void readTheme();
    void setXfcePanelDark(bool dark);
    void apply(const std::function<void(PanelEvidence&)>& edit);

    QDBusConnection m_bus;
    QDBusServiceWatcher m_services;
    BarTheme m_theme;
    PanelEvidence m_evidence;
};

} // namespace lumora

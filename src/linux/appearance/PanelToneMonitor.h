#pragma once

#include "linux/appearance/PanelTone.h"
#include "linux/appearance/PortalAppearance.h"

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusServiceWatcher>
#include <QObject>

#include <functional>

namespace lumora {

/// Gathers what is known about the panel's colours, without waiting and without starting any
/// service for it, and tells when the symbol's tone changes.
class PanelToneMonitor final : public QObject {
    Q_OBJECT

public:
    /// `desktop` is the session's XDG_CURRENT_DESKTOP.
    PanelToneMonitor(const QDBusConnection& bus, const QString& desktop, QObject* parent = nullptr);

    SymbolTone tone() const { return toneFor(m_evidence); }

    bool eventFilter(QObject* watched, QEvent* event) override;

Q_SIGNALS:
    void toneChanged();

private Q_SLOTS:
    void onXfceSetting(const QDBusMessage& change);
    void onXfceSettingRemoved(const QDBusMessage& change);

private:
    void watchXfce();
    void readXfce();
    void apply(const std::function<void(PanelEvidence&)>& edit);

    QDBusConnection m_bus;
    PortalAppearance m_portal;
    QDBusServiceWatcher m_services;
    PanelEvidence m_evidence;
};

} // namespace lumora

#pragma once

#include "platform/DesktopAppearance.h"

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusServiceWatcher>
#include <QSet>

namespace lumora {

/// Reads the user's wishes from the desktop portal, without waiting for it and without starting
/// it, and follows their changes.
class PortalAppearance final : public DesktopAppearance {
    Q_OBJECT

public:
    explicit PortalAppearance(const QDBusConnection& bus);

private Q_SLOTS:
    void onSetting(const QDBusMessage& change);

private:
    void readAll();
    void read(const QString& group, const QString& key);
    void apply(const QString& group, const QString& key, const QVariant& value);

    QDBusConnection m_bus;
    QDBusServiceWatcher m_services;
    QSet<QString> m_stilling; ///< the groups that have a setting against motion
};

} // namespace lumora

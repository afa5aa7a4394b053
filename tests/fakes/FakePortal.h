#pragma once

#include <QDBusArgument>
#include <QDBusConnection>
#include <QDBusContext>
#include <QDBusVariant>
#include <QHash>
#include <QObject>
#include <QString>
#include <QVariant>

namespace lumora::tests {

/// A settings portal with the settings that a test gives it, by "group key".
class FakePortal : public QObject, protected QDBusContext {
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.freedesktop.portal.Settings")

public:
    FakePortal(QDBusConnection bus, QHash<QString, QVariant> settings)
        : m_settings(std::move(settings)) {
        bus.registerObject(
            QStringLiteral("/org/freedesktop/portal/desktop"), this,
            QDBusConnection::ExportAllSlots | QDBusConnection::ExportAllSignals);
        bus.registerService(QStringLiteral("org.freedesktop.portal.Desktop"));
    }

    void change(const QString& group, const QString& key, const QVariant& value) {
        Q_EMIT SettingChanged(group, key, QDBusVariant(value));
    }

    /// A colour as portals name it.
    static QVariant color(double red, double green, double blue) {
        QDBusArgument argument;
        argument.beginStructure();
        argument << red << green << blue;
        argument.endStructure();
        return QVariant::fromValue(argument);
    }

    int reads = 0; ///< how many settings were asked for

public Q_SLOTS:

    QDBusVariant Read(const QString& group, const QString& key) {
        ++reads;
        const auto setting = m_settings.constFind(group + u' ' + key);
        if (setting == m_settings.cend()) {
            sendErrorReply(
                QStringLiteral("org.freedesktop.portal.Error.NotFound"),
                QStringLiteral("no such setting"));
            return {};
        }
        // A variant within a variant, as the real one has it.
        return QDBusVariant(QVariant::fromValue(QDBusVariant(*setting)));
    }

Q_SIGNALS:
    void SettingChanged(const QString& group, const QString& key, const QDBusVariant& value);

private:
    QHash<QString, QVariant> m_settings;
};

} // namespace lumora::tests

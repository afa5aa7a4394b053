#pragma once

#include <QDBusAbstractAdaptor>
#include <QStringList>
#include <QVariantMap>

#include <functional>

namespace lumora {

/// How desktops speak to a program that they may start over the bus, by its desktop entry: the
/// interface org.freedesktop.Application, on the object that owns this.
class DesktopApplication : public QDBusAbstractAdaptor {
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.freedesktop.Application")

public:
    /// What is done. The activation token is empty where the desktop gave none.
    struct Actions {
        std::function<void(QByteArray activationToken)> open;
        std::function<void(QByteArray activationToken)> openSettings;
        std::function<void()> refresh;
        std::function<void()> quit;
    };

    DesktopApplication(Actions actions, QObject* object);

public Q_SLOTS:
    // The methods of the D-Bus interface; each may know a token for its windows.

    /// The program was chosen.
    void Activate(const QVariantMap& platformData);
    /// It was chosen for files, which it takes none of.
    void Open(const QStringList& uris, const QVariantMap& platformData);
    /// One of the actions in its desktop entry was chosen; any other is left alone.
    void ActivateAction(
        const QString& name, const QVariantList& parameters, const QVariantMap& platformData);

private:
    Actions m_actions;
};

} // namespace lumora

#pragma once

#include "linux/tray/DBusMenu.h"
#include "linux/tray/StatusNotifierItem.h"
#include "linux/tray/StatusNotifierRegistration.h"
#include "platform/StatusItem.h"

#include <QDBusConnection>

namespace lumora {

/// One appearance of the program in a status area: the item, its menu and their registration, on
/// one connection. Hosts take it for gone when the connection is.
class StatusNotifierSession final : public QObject {
    Q_OBJECT

public:
    enum class Connection {
        Shared, ///< stays open when the session ends
        Own,    ///< is closed with the session
    };

    StatusNotifierSession(const QDBusConnection& bus, Connection use, QObject* parent = nullptr);

    void setContent(const StatusItemContent& content);
    void setPixmaps(const QList<IconPixmap>& pixmaps);
    void setIconName(const QString& name);

    /// Begins to look for a status area.
    void start();

    /// Shows the host once more what it may have missed while it was starting: the symbol, and with
    /// `wholly` the item as such.
    void insist(bool wholly);

    StatusNotifierRegistration::State state() const { return m_registration.state(); }

Q_SIGNALS:
    void stateChanged();
    void watcherChanged(const QString& owner);
    void activated(QPoint position, QByteArray activationToken);
    void commandChosen(MenuCommand command, QByteArray activationToken);

private:
    /// Closes the connection once nothing below uses it any more.
    struct Closer {
        ~Closer();
        QString name; ///< empty: leave it open
    };

    Closer m_closer;
    StatusNotifierItem m_item;
    DBusMenu m_menu;
    StatusNotifierRegistration m_registration;
};

} // namespace lumora

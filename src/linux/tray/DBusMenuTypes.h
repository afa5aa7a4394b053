#pragma once

#include <QDBusArgument>
#include <QDBusVariant>
#include <QList>
#include <QMetaType>
#include <QString>
#include <QVariantMap>

namespace lumora {

/// A row of an exported menu with the rows below it.
struct DBusMenuLayout {
    int id = 0; ///< 0 is the menu itself
    QVariantMap properties;
    QList<DBusMenuLayout> children;
};

/// The properties of one row.
struct DBusMenuItemProperties {
    int id = 0;
    QVariantMap properties;
};

/// The names of properties that a row no longer has.
struct DBusMenuItemKeys {
    int id = 0;
    QStringList names;
};

/// Something that happened to a row at the host.
struct DBusMenuEvent {
    int id = 0;
    QString name; ///< "clicked", "opened", "closed", "hovered"
    QDBusVariant data;
    uint timestamp = 0; ///< the host's event time, milliseconds
};

QDBusArgument& operator<<(QDBusArgument& out, const DBusMenuLayout& layout);
const QDBusArgument& operator>>(const QDBusArgument& in, DBusMenuLayout& layout);
QDBusArgument& operator<<(QDBusArgument& out, const DBusMenuItemProperties& item);
const QDBusArgument& operator>>(const QDBusArgument& in, DBusMenuItemProperties& item);
QDBusArgument& operator<<(QDBusArgument& out, const DBusMenuItemKeys& item);
const QDBusArgument& operator>>(const QDBusArgument& in, DBusMenuItemKeys& item);
QDBusArgument& operator<<(QDBusArgument& out, const DBusMenuEvent& event);
const QDBusArgument& operator>>(const QDBusArgument& in, DBusMenuEvent& event);

/// Makes the types above known to the bus library; may be called any number of times.
void registerDBusMenuTypes();

} // namespace lumora

Q_DECLARE_METATYPE(lumora::DBusMenuLayout)
Q_DECLARE_METATYPE(lumora::DBusMenuItemProperties)
Q_DECLARE_METATYPE(lumora::DBusMenuItemKeys)
Q_DECLARE_METATYPE(lumora::DBusMenuEvent)

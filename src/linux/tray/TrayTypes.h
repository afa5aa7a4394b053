#pragma once

#include <QByteArray>
#include <QDBusArgument>
#include <QDBusVariant>
#include <QImage>
#include <QList>
#include <QMetaType>
#include <QString>
#include <QVariantMap>

namespace lumora {

/// An image as status areas take it: rows from the top, each pixel as alpha, red, green, blue in
/// one byte each, the colours not multiplied by alpha.
struct IconPixmap {
    int width = 0;  ///< pixels
    int height = 0; ///< pixels
    QByteArray bytes;

    /// The same picture in the form above.
    static IconPixmap fromImage(const QImage& image);

    bool operator==(const IconPixmap&) const = default;
};

/// The tool tip of a status item, without an icon of its own.
struct StatusToolTip {
    QString title; ///< plain text
    QString body;  ///< text in which "&", "<" and ">" are written as entities

    bool operator==(const StatusToolTip&) const = default;
};

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

QDBusArgument& operator<<(QDBusArgument& out, const IconPixmap& pixmap);
const QDBusArgument& operator>>(const QDBusArgument& in, IconPixmap& pixmap);
QDBusArgument& operator<<(QDBusArgument& out, const StatusToolTip& toolTip);
const QDBusArgument& operator>>(const QDBusArgument& in, StatusToolTip& toolTip);
QDBusArgument& operator<<(QDBusArgument& out, const DBusMenuLayout& layout);
const QDBusArgument& operator>>(const QDBusArgument& in, DBusMenuLayout& layout);
QDBusArgument& operator<<(QDBusArgument& out, const DBusMenuItemProperties& item);
const QDBusArgument& operator>>(const QDBusArgument& in, DBusMenuItemProperties& item);
QDBusArgument& operator<<(QDBusArgument& out, const DBusMenuItemKeys& item);
const QDBusArgument& operator>>(const QDBusArgument& in, DBusMenuItemKeys& item);
QDBusArgument& operator<<(QDBusArgument& out, const DBusMenuEvent& event);
const QDBusArgument& operator>>(const QDBusArgument& in, DBusMenuEvent& event);

/// Makes the types above known to the bus library; may be called any number of times.
void registerTrayTypes();

} // namespace lumora

Q_DECLARE_METATYPE(lumora::IconPixmap)
Q_DECLARE_METATYPE(lumora::StatusToolTip)
Q_DECLARE_METATYPE(lumora::DBusMenuLayout)
Q_DECLARE_METATYPE(lumora::DBusMenuItemProperties)
Q_DECLARE_METATYPE(lumora::DBusMenuItemKeys)
Q_DECLARE_METATYPE(lumora::DBusMenuEvent)

#pragma once

#include <QByteArray>
#include <QDBusArgument>
#include <QImage>
#include <QList>
#include <QMetaType>
#include <QString>

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

QDBusArgument& operator<<(QDBusArgument& out, const IconPixmap& pixmap);
const QDBusArgument& operator>>(const QDBusArgument& in, IconPixmap& pixmap);
QDBusArgument& operator<<(QDBusArgument& out, const StatusToolTip& toolTip);
const QDBusArgument& operator>>(const QDBusArgument& in, StatusToolTip& toolTip);

/// Makes the types above known to the bus library; may be called any number of times.
void registerStatusNotifierTypes();

} // namespace lumora

Q_DECLARE_METATYPE(lumora::IconPixmap)
Q_DECLARE_METATYPE(lumora::StatusToolTip)

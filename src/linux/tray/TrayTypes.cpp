#include "linux/tray/TrayTypes.h"

#include <QDBusMetaType>
#include <QtEndian>

namespace lumora {

IconPixmap IconPixmap::fromImage(const QImage& image) {
    const QImage plain = image.convertToFormat(QImage::Format_ARGB32);
    IconPixmap pixmap{plain.width(), plain.height(), {}};
    pixmap.bytes.resize(qsizetype(4) * plain.width() * plain.height());
    char* out = pixmap.bytes.data();
    for (int y = 0; y < plain.height(); ++y) {
        qToBigEndian<quint32>(plain.constScanLine(y), plain.width(), out);
        out += qsizetype(4) * plain.width();
    }
    return pixmap;
}

QDBusArgument& operator<<(QDBusArgument& out, const IconPixmap& pixmap) {
    out.beginStructure();
    out << pixmap.width << pixmap.height << pixmap.bytes;
    out.endStructure();
    return out;
}

const QDBusArgument& operator>>(const QDBusArgument& in, IconPixmap& pixmap) {
    in.beginStructure();
    in >> pixmap.width >> pixmap.height >> pixmap.bytes;
    in.endStructure();
    return in;
}

QDBusArgument& operator<<(QDBusArgument& out, const StatusToolTip& toolTip) {
    out.beginStructure();
    out << QString() << QList<IconPixmap>() << toolTip.title << toolTip.body;
    out.endStructure();
    return out;
}

const QDBusArgument& operator>>(const QDBusArgument& in, StatusToolTip& toolTip) {
    QString iconName;
    QList<IconPixmap> icon;
    in.beginStructure();
    in >> iconName >> icon >> toolTip.title >> toolTip.body;
    in.endStructure();
    return in;
}

QDBusArgument& operator<<(QDBusArgument& out, const DBusMenuLayout& layout) {
    out.beginStructure();
    out << layout.id << layout.properties;
    out.beginArray(QMetaType::fromType<QDBusVariant>());
    for (const DBusMenuLayout& child : layout.children)
        out << QDBusVariant(QVariant::fromValue(child));
    out.endArray();
    out.endStructure();
    return out;
}

const QDBusArgument& operator>>(const QDBusArgument& in, DBusMenuLayout& layout) {
    layout.children.clear();
    in.beginStructure();
    in >> layout.id >> layout.properties;
    in.beginArray();
    while (!in.atEnd()) {
        QDBusVariant child;
        in >> child;
        layout.children += qdbus_cast<DBusMenuLayout>(child.variant());
    }
    in.endArray();
    in.endStructure();
    return in;
}

QDBusArgument& operator<<(QDBusArgument& out, const DBusMenuItemProperties& item) {
    out.beginStructure();
    out << item.id << item.properties;
    out.endStructure();
    return out;
}

const QDBusArgument& operator>>(const QDBusArgument& in, DBusMenuItemProperties& item) {
    in.beginStructure();
    in >> item.id >> item.properties;
    in.endStructure();
    return in;
}

QDBusArgument& operator<<(QDBusArgument& out, const DBusMenuItemKeys& item) {
    out.beginStructure();
    out << item.id << item.names;
    out.endStructure();
    return out;
}

const QDBusArgument& operator>>(const QDBusArgument& in, DBusMenuItemKeys& item) {
    in.beginStructure();
    in >> item.id >> item.names;
    in.endStructure();
    return in;
}

QDBusArgument& operator<<(QDBusArgument& out, const DBusMenuEvent& event) {
    out.beginStructure();
    out << event.id << event.name << event.data << event.timestamp;
    out.endStructure();
    return out;
}

const QDBusArgument& operator>>(const QDBusArgument& in, DBusMenuEvent& event) {
    in.beginStructure();
    in >> event.id >> event.name >> event.data >> event.timestamp;
    in.endStructure();
    return in;
}

void registerTrayTypes() {
    qDBusRegisterMetaType<IconPixmap>();
    qDBusRegisterMetaType<QList<IconPixmap>>();
    qDBusRegisterMetaType<StatusToolTip>();
    qDBusRegisterMetaType<DBusMenuLayout>();
    qDBusRegisterMetaType<DBusMenuItemProperties>();
    qDBusRegisterMetaType<QList<DBusMenuItemProperties>>();
    qDBusRegisterMetaType<DBusMenuItemKeys>();
    qDBusRegisterMetaType<QList<DBusMenuItemKeys>>();
    qDBusRegisterMetaType<DBusMenuEvent>();
    qDBusRegisterMetaType<QList<DBusMenuEvent>>();
    qDBusRegisterMetaType<QList<int>>();
}

} // namespace lumora

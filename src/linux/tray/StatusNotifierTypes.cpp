#include "linux/tray/StatusNotifierTypes.h"

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

void registerStatusNotifierTypes() {
    qDBusRegisterMetaType<IconPixmap>();
    qDBusRegisterMetaType<QList<IconPixmap>>();
    qDBusRegisterMetaType<StatusToolTip>();
}

} // namespace lumora

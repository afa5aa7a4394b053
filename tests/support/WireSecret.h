#pragma once

#include <QDBusArgument>
#include <QDBusObjectPath>

namespace lumora::tests {

/// A secret as it crosses the bus.
struct WireSecret {
    QDBusObjectPath session;
    QByteArray parameters;
    QByteArray value;
    QString contentType;
};

inline QDBusArgument& operator<<(QDBusArgument& argument, const WireSecret& secret) {
    argument.beginStructure();
    argument << secret.session << secret.parameters << secret.value << secret.contentType;
    argument.endStructure();
    return argument;
}

inline const QDBusArgument& operator>>(const QDBusArgument& argument, WireSecret& secret) {
    argument.beginStructure();
    argument >> secret.session >> secret.parameters >> secret.value >> secret.contentType;
    argument.endStructure();
    return argument;
}

} // namespace lumora::tests

#pragma once

#include <QDBusMessage>
#include <QDBusVariant>
#include <QVariant>

namespace lumora {

/// Settings services tell of a change by group, key and value. Whether `change` is about the
/// setting `key` in `group`.
inline bool isAbout(const QDBusMessage& change, QStringView group, QStringView key) {
    const QVariantList arguments = change.arguments();
    return arguments.value(0).toString() == group && arguments.value(1).toString() == key;
}

/// `value` without the wrapping that variants have on the bus; some services wrap them twice.
inline QVariant unwrapped(QVariant value) {
    while (value.metaType() == QMetaType::fromType<QDBusVariant>())
        value = value.value<QDBusVariant>().variant();
    return value;
}

/// The new value that `change` tells of.
inline QVariant valueIn(const QDBusMessage& change) {
    return unwrapped(change.arguments().value(2));
}

} // namespace lumora

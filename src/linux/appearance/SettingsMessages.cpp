#include "linux/appearance/SettingsMessages.h"

#include <QDBusVariant>

namespace lumora {

bool isAbout(const QDBusMessage& change, QStringView group, QStringView key) {
    const QVariantList arguments = change.arguments();
    return arguments.value(0).toString() == group && arguments.value(1).toString() == key;
}

QVariant unwrapped(QVariant value) {
    while (value.metaType() == QMetaType::fromType<QDBusVariant>())
        value = value.value<QDBusVariant>().variant();
    return value;
}

QVariant valueIn(const QDBusMessage& change) {
    return unwrapped(change.arguments().value(2));
}

} // namespace lumora

#pragma once

#include <QDBusMessage>
#include <QVariant>

namespace lumora {

/// Settings services tell of a change by group, key and value. Whether `change` is about the
/// setting `key` in `group`.
bool isAbout(const QDBusMessage& change, QStringView group, QStringView key);

/// `value` without the wrapping that variants have on the bus; some services wrap them twice.
QVariant unwrapped(QVariant value);

/// The new value that `change` tells of.
QVariant valueIn(const QDBusMessage& change);

} // namespace lumora

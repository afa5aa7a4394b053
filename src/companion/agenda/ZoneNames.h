#pragma once

#include <QByteArray>
#include <QTimeZone>

#include <optional>

namespace lumora::companion {

/// The zone of the system that a calendar means by `name`: a name of the system's, written however,
/// one of Windows', or a globally unique name that ends in one of them. Absent: the calendar itself
/// has to say what it means.
[[nodiscard]] std::optional<QTimeZone> systemZone(const QByteArray& name);

} // namespace lumora::companion

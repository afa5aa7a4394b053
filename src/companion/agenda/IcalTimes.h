#pragma once

#include <QtGlobal>

#include <libical/ical.h>

#include <optional>

namespace lumora::companion {

/// The date and time of `property`, or the start of its period. Absent when it holds none.
[[nodiscard]] std::optional<icaltimetype> timeIn(const icalproperty& property);

/// `time` in seconds since 1970, read as if it were UTC. Absent when there is no such day.
[[nodiscard]] std::optional<qint64> writtenSeconds(const icaltimetype& time);

} // namespace lumora::companion

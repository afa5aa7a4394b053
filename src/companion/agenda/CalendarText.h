#pragma once

#include "companion/agenda/EventRecord.h"

#include <QStringList>

#include <optional>
#include <vector>

namespace lumora::companion {

/// The longest iCalendar text that is read, in bytes.
inline constexpr qsizetype longestCalendarText = qsizetype{10} * 1024 * 1024;

/// What the user's configuration says about reading events.
struct ReaderSettings {
    QStringList myAddresses;  ///< see AgendaSettings
    QStringList meetingHosts; ///< see AgendaSettings
};

/// The events of `text`, an iCalendar text, in its order; those without a start are left out.
/// Absent when there is no calendar in it at all.
[[nodiscard]] std::optional<std::vector<EventRecord>>
readCalendar(const QByteArray& text, const ReaderSettings& settings);

} // namespace lumora::companion

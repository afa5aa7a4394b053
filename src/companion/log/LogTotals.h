#pragma once

#include "companion/log/LogEntry.h"

#include <QHash>

namespace lumora::companion {

/// What the log says of each habit and chore, by days.
struct LogTotals {
    QHash<QString, QHash<QDate, qint64>> habits;             ///< times on each day, by id
    QHash<QString, QDate> chores;                            ///< the last day it was done, by id
    QHash<QString, std::chrono::sys_seconds> lastHabitEntry; ///< by id
    QHash<QString, std::chrono::sys_seconds> lastChoreEntry; ///< by id
};

/// Adds an entry; the order of entries makes no difference. `dayEnds` must be the same for all.
void addTo(LogTotals& totals, const LogEntry& entry, std::chrono::hours dayEnds);

[[nodiscard]] LogTotals totalsOf(const LogEntries& log, std::chrono::hours dayEnds);

} // namespace lumora::companion

#pragma once

#include "companion/log/LogTotals.h"
#include "companion/parts/Parts.h"
#include "companion/settings/ServiceSettings.h"

namespace lumora::companion {

/// How soon after another a click is the same one, sent again because its answer got lost.
inline constexpr std::chrono::seconds repeatTime{2};

/// The habits as they stand on `day`. A streak counts the days in a row on which a habit was done
/// up to that day, or up to the day before while there is still time.
[[nodiscard]] HabitsPart
habitsOn(QDate day, const std::vector<HabitSettings>& habits, const LogTotals& totals);

/// The chores that are due on `day`, the longest overdue first and those never done last.
[[nodiscard]] ChoresPart
choresOn(QDate day, const std::vector<ChoreSettings>& chores, const LogTotals& totals);

/// When and where something is done.
struct LogMoment {
    std::chrono::sys_seconds now;
    std::chrono::seconds offset{0}; ///< from UTC
};

/// What is written when a habit is toggled on `day`: once more, or, where it is done, none at all.
/// Absent for a repeated click.
[[nodiscard]] std::optional<LogEntry>
toggleEntry(const HabitSettings& habit, QDate day, const LogTotals& totals, LogMoment at);

/// What is written when a chore is done. Absent for a repeated click.
[[nodiscard]] std::optional<LogEntry>
doneEntry(const ChoreSettings& chore, const LogTotals& totals, LogMoment at);

} // namespace lumora::companion

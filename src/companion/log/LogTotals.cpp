#include "companion/log/LogTotals.h"

#include <algorithm>

namespace lumora::companion {

void addTo(LogTotals& totals, const LogEntry& entry, std::chrono::hours dayEnds) {
    const QDate day = dayOf(entry.time, entry.offset, dayEnds);
    const bool isHabit = entry.kind == LogEntry::Kind::Habit;
    if (isHabit)
        totals.habits[entry.id][day] += entry.change;
    else if (QDate& last = totals.chores[entry.id]; !last.isValid() || last < day)
        last = day;
    auto& latest = isHabit ? totals.lastHabitEntry : totals.lastChoreEntry;
    const auto before = latest.constFind(entry.id);
    if (before == latest.cend() || *before < entry.time)
        latest[entry.id] = entry.time;
}

LogTotals totalsOf(const LogEntries& log, std::chrono::hours dayEnds) {
    LogTotals totals;
    for (const LogEntry& entry : log.entries)
        addTo(totals, entry, dayEnds);
    return totals;
}

} // namespace lumora::companion

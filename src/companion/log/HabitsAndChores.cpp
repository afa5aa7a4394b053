#include "companion/log/HabitsAndChores.h"

#include <algorithm>

namespace lumora::companion {

namespace {

using DayCounts = QHash<QDate, qint64>;

qint64 countOn(const DayCounts& counts, QDate day) {
    return std::max<qint64>(0, counts.value(day));
}

qint64 streakUpTo(QDate day, const DayCounts& counts, qint64 target) {
    if (countOn(counts, day) < target)
        day = day.addDays(-1);
    qint64 streak = 0;
    for (; countOn(counts, day) >= target; day = day.addDays(-1))
        ++streak;
    return streak;
}

bool isRepeated(
    const QHash<QString, std::chrono::sys_seconds>& latest, const QString& id,
    std::chrono::sys_seconds now) {
    const auto last = latest.constFind(id);
    return last != latest.cend() && std::chrono::abs(now - *last) < repeatTime;
}

/// The longest overdue first; those never done last, each otherwise in the file's order.
bool isSooner(const ChoreState& one, const ChoreState& other) {
    return one.daysOverdue.value_or(-1) > other.daysOverdue.value_or(-1);
}

} // namespace

HabitsPart habitsOn(QDate day, const std::vector<HabitSettings>& habits, const LogTotals& totals) {
    HabitsPart part;
    for (const HabitSettings& habit : habits) {
        const DayCounts counts = totals.habits.value(habit.id);
        const qint64 count = countOn(counts, day);
        const bool isDone = count >= habit.target;
        part.items.push_back(
            {habit.id, habit.name, isDone, count, habit.target,
             streakUpTo(day, counts, habit.target)});
        part.done += isDone ? 1 : 0;
    }
    part.total = qint64(part.items.size());
    return part;
}

ChoresPart choresOn(QDate day, const std::vector<ChoreSettings>& chores, const LogTotals& totals) {
    ChoresPart part;
    for (const ChoreSettings& chore : chores) {
        ChoreState state{chore.id, chore.name, chore.room, std::nullopt};
        if (const QDate last = totals.chores.value(chore.id); last.isValid()) {
            state.daysOverdue = last.daysTo(day) - chore.days;
            if (*state.daysOverdue < 0)
                continue;
        }
        part.top.push_back(std::move(state));
    }
    std::ranges::stable_sort(part.top, isSooner);
    part.count = qint64(part.top.size());
    return part;
}

std::optional<LogEntry>
toggleEntry(const HabitSettings& habit, QDate day, const LogTotals& totals, LogMoment at) {
    if (isRepeated(totals.lastHabitEntry, habit.id, at.now))
        return std::nullopt;
    const qint64 sum = totals.habits.value(habit.id).value(day);
    LogEntry entry{at.now, at.offset, LogEntry::Kind::Habit, habit.id, 1};
    if (sum >= habit.target)
        entry.change = -sum;
    else if (sum < 0) // more was taken away by hand than there was
        entry.change = 1 - sum;
    return entry;
}

std::optional<LogEntry>
doneEntry(const ChoreSettings& chore, const LogTotals& totals, LogMoment at) {
    if (isRepeated(totals.lastChoreEntry, chore.id, at.now))
        return std::nullopt;
    return LogEntry{at.now, at.offset, LogEntry::Kind::Chore, chore.id, 1};
}

} // namespace lumora::companion

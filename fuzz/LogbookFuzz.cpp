// Every line of the log is an entry or skipped, an entry is written as it was read, and the figures
// that come of it are ones that can be.

#include "Expectations.h"
#include "Targets.h"
#include "companion/log/HabitsAndChores.h"

using namespace Qt::Literals::StringLiterals;

namespace lumora::fuzz {

namespace {

using namespace companion;

void expectSameAgain(const LogEntry& entry) {
    QByteArray line = logLine(entry);
    expect(line.count('\n') == 1 && line.endsWith('\n'), "one line");
    line.chop(1);
    expect(parseLogLine(line) == entry, "the same entry when it is written anew");
}

void expectFigures(const LogTotals& totals, const QString& id, QDate day) {
    const HabitSettings habit{id, id, 2};
    const HabitState state = habitsOn(day, {habit}, totals).items.front();
    expect(state.count >= 0 && state.streak >= 0, "no negative figure");
    expect(state.done == (state.count >= 2), "done with all times");
    expect(!state.done || state.streak > 0, "a streak with the day in it");
    if (const auto entry = toggleEntry(habit, day, totals, {std::chrono::sys_days(), {}})) {
        LogTotals after = totals;
        after.habits[id][day] += entry->change;
        const bool isMore = habitsOn(day, {habit}, after).items.front().count == state.count + 1;
        expect(isMore != state.done, "once more, or none at all");
    }
    const ChoresPart chores = choresOn(day, {{id, id, {}, 7}}, totals);
    expect(chores.count == qint64(chores.top.size()), "as many as are listed");
    for (const ChoreState& chore : chores.top)
        expect(!chore.daysOverdue || *chore.daysOverdue >= 0, "what is due");
}

} // namespace

void logbook(QByteArrayView input) {
    const LogEntries log = parseLog(input);
    const qsizetype lines = input.toByteArray().count('\n') + 1;
    expect(qsizetype(log.entries.size()) + log.skipped <= lines, "no more than there are lines");
    const LogTotals totals = totalsOf(log, std::chrono::hours(3));
    for (const LogEntry& entry : log.entries) {
        expectWhole(entry.id);
        expectSameAgain(entry);
        expectFigures(totals, entry.id, dayOf(entry.time, entry.offset, std::chrono::hours(3)));
    }
}

} // namespace lumora::fuzz

#include "companion/log/HabitsAndChores.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

using namespace Qt::Literals::StringLiterals;
using namespace lumora::companion;
using namespace std::chrono_literals;
using testing::ElementsAre;

namespace {

const QDate today(2025, 3, 4);
constexpr std::chrono::sys_seconds noon = std::chrono::sys_days(2025y / 3 / 4) + 12h;
const HabitSettings reading{u"read"_s, u"Read"_s, 1};
const HabitSettings water{u"water"_s, u"Drink water"_s, 8};

LogTotals totals(const QByteArray& lines, std::chrono::hours dayEnds = 0h) {
    const LogEntries log = parseLog(lines);
    EXPECT_EQ(log.skipped, 0);
    return totalsOf(log, dayEnds);
}

HabitState readingOn(QDate day, const LogTotals& totals) {
    return habitsOn(day, {reading}, totals).items.front();
}

/// The change that a click at noon writes; absent when it writes nothing.
std::optional<qint64> clickOn(const HabitSettings& habit, const LogTotals& totals) {
    const auto entry = toggleEntry(habit, today, totals, {noon, 1h});
    return entry ? std::optional(entry->change) : std::nullopt;
}

} // namespace

TEST(Habits, StandAtNothingWithoutALog) {
    const HabitsPart part = habitsOn(today, {reading, water}, {});
    EXPECT_EQ(part.done, 0);
    EXPECT_EQ(part.total, 2);
    EXPECT_THAT(
        part.items, ElementsAre(
                        HabitState{u"read"_s, u"Read"_s, false, 0, 1, 0},
                        HabitState{u"water"_s, u"Drink water"_s, false, 0, 8, 0}));
}

TEST(Habits, CountTheDay) {
    const LogTotals log = totals("2025-03-03T12:00:00Z\thabit\twater\t+8\n"
                                 "2025-03-04T12:00:00Z\thabit\twater\t+5\n"
                                 "2025-03-04T11:00:00Z\thabit\twater\t+4\n"
                                 "2025-03-04T10:00:00Z\thabit\tread\t+1\n"
                                 "2025-03-04T10:00:10Z\thabit\tread\t-2\n"
                                 "2025-03-04T10:00:00Z\thabit\tother\t+1\n");
    const HabitsPart part = habitsOn(today, {reading, water}, log);
    EXPECT_EQ(part.done, 1);
    EXPECT_THAT(
        part.items, ElementsAre(
                        HabitState{u"read"_s, u"Read"_s, false, 0, 1, 0},
                        HabitState{u"water"_s, u"Drink water"_s, true, 9, 8, 2}));
}

TEST(Habits, HaveAStreakAsLongAsThereIsTime) {
    const LogTotals log = totals("2025-03-01T12:00:00Z\thabit\tread\t+1\n"
                                 "2025-03-03T12:00:00Z\thabit\tread\t+1\n"
                                 "2025-02-28T12:00:00Z\thabit\tread\t+1\n"
                                 "2025-03-02T12:00:00Z\thabit\tread\t+1\n");
    EXPECT_EQ(readingOn(QDate(2025, 3, 3), log).streak, 4);
    EXPECT_EQ(readingOn(QDate(2025, 3, 4), log).streak, 4);
    EXPECT_FALSE(readingOn(QDate(2025, 3, 4), log).done);
    EXPECT_EQ(readingOn(QDate(2025, 3, 5), log).streak, 0);
}

TEST(Habits, EndTheirDaysWhenTheirOwnerDoes) {
    const QByteArray line = "2025-03-05T02:30:00+01:00\thabit\tread\t+1\n";
    EXPECT_TRUE(readingOn(QDate(2025, 3, 4), totals(line, 3h)).done);
    EXPECT_FALSE(readingOn(QDate(2025, 3, 4), totals(line, 2h)).done);
    EXPECT_TRUE(readingOn(QDate(2025, 3, 5), totals(line, 2h)).done);
}

TEST(Habits, KeepTheirStreakWhenClocksAreSet) {
    // On 30 March clocks go from 2:00 to 3:00, on 26 October from 3:00 to 2:00.
    const LogTotals spring = totals("2025-03-29T23:59:59+01:00\thabit\tread\t+1\n"
                                    "2025-03-30T23:59:59+02:00\thabit\tread\t+1\n"
                                    "2025-03-31T00:00:00+02:00\thabit\tread\t+1\n");
    EXPECT_EQ(readingOn(QDate(2025, 3, 31), spring).streak, 3);
    const LogTotals autumn = totals("2025-10-25T00:10:00+02:00\thabit\tread\t+1\n"
                                    "2025-10-26T02:30:00+01:00\thabit\tread\t+1\n"
                                    "2025-10-27T00:10:00+01:00\thabit\tread\t+1\n");
    EXPECT_EQ(readingOn(QDate(2025, 10, 27), autumn).streak, 3);
    // The same hour, twice: both belong to the day that began before.
    const LogTotals night = totals(
        "2025-10-26T02:30:00+02:00\thabit\tread\t+1\n"
        "2025-10-26T02:30:00+01:00\thabit\tread\t+1\n",
        3h);
    EXPECT_EQ(readingOn(QDate(2025, 10, 25), night).count, 2);
}

TEST(Habits, ToggleOnceMoreOrNotAtAll) {
    EXPECT_EQ(clickOn(reading, {}), 1);
    EXPECT_EQ(clickOn(reading, totals("2025-03-04T10:00:00Z\thabit\tread\t+1\n")), -1);
    EXPECT_EQ(clickOn(reading, totals("2025-03-03T10:00:00Z\thabit\tread\t+1\n")), 1);
    EXPECT_EQ(clickOn(water, totals("2025-03-04T10:00:00Z\thabit\twater\t+7\n")), 1);
    EXPECT_EQ(clickOn(water, totals("2025-03-04T10:00:00Z\thabit\twater\t+9\n")), -9);
    EXPECT_EQ(clickOn(reading, totals("2025-03-04T10:00:00Z\thabit\tread\t-3\n")), 4);
    const auto entry = toggleEntry(reading, today, {}, {noon, 1h});
    EXPECT_EQ(logLine(*entry), "2025-03-04T13:00:00+01:00\thabit\tread\t+1\n");
}

TEST(Habits, TakeARepeatedClickForOne) {
    const auto clickAfter = [](std::chrono::seconds pause) {
        LogTotals log;
        addTo(log, {noon - pause, 1h, LogEntry::Kind::Habit, u"read"_s, 1}, 0h);
        return clickOn(reading, log);
    };
    EXPECT_EQ(clickAfter(0s), std::nullopt);
    EXPECT_EQ(clickAfter(1s), std::nullopt);
    EXPECT_EQ(clickAfter(2s), -1);
    EXPECT_EQ(clickAfter(-1s), std::nullopt); // the clock was set back a little
    EXPECT_EQ(clickAfter(-2h), -1);
    // Another's click is no repetition, nor is that of a chore with the same id.
    EXPECT_EQ(clickOn(reading, totals("2025-03-04T11:59:59Z\thabit\twater\t+1\n")), 1);
    EXPECT_EQ(clickOn(reading, totals("2025-03-04T11:59:59Z\tchore\tread\tdone\n")), 1);
}

TEST(Chores, AreDueWhenTheirTimeIsOver) {
    const std::vector<ChoreSettings> chores{
        {u"new"_s, u"New"_s, u"Kitchen"_s, 7},
        {u"week"_s, u"Week"_s, {}, 7},
        {u"late"_s, u"Late"_s, {}, 7},
        {u"soon"_s, u"Soon"_s, {}, 7},
    };
    const LogTotals log = totals("2025-02-25T12:00:00Z\tchore\tweek\tdone\n"
                                 "2025-02-20T12:00:00Z\tchore\tlate\tdone\n"
                                 "2025-01-20T12:00:00Z\tchore\tlate\tdone\n"
                                 "2025-02-26T12:00:00Z\tchore\tsoon\tdone\n"
                                 "2025-03-04T12:00:00Z\thabit\tnew\t+1\n");
    const ChoresPart part = choresOn(today, chores, log);
    EXPECT_EQ(part.count, 3);
    EXPECT_THAT(
        part.top,
        ElementsAre(
            ChoreState{u"late"_s, u"Late"_s, {}, 5}, ChoreState{u"week"_s, u"Week"_s, {}, 0},
            ChoreState{u"new"_s, u"New"_s, u"Kitchen"_s, std::nullopt}));
}

TEST(Chores, AreDoneOncePerClick) {
    const ChoreSettings plants{u"plants"_s, u"Plants"_s, {}, 7};
    const auto entry = doneEntry(plants, {}, {noon, -5h});
    ASSERT_TRUE(entry);
    EXPECT_EQ(logLine(*entry), "2025-03-04T07:00:00-05:00\tchore\tplants\tdone\n");
    LogTotals log;
    addTo(log, *entry, 0h);
    EXPECT_EQ(doneEntry(plants, log, {noon + 1s, -5h}), std::nullopt);
    EXPECT_TRUE(doneEntry(plants, log, {noon + 2s, -5h}));
    EXPECT_EQ(choresOn(today, {plants}, log).count, 0);
}

#include "companion/log/LogEntry.h"

#include <gtest/gtest.h>

using namespace Qt::Literals::StringLiterals;
using namespace lumora::companion;
using namespace std::chrono_literals;
using Kind = LogEntry::Kind;

namespace {

constexpr std::chrono::sys_seconds march4 = std::chrono::sys_days(2025y / 3 / 4);

} // namespace

TEST(LogEntry, ReadsWhatItSays) {
    EXPECT_EQ(
        parseLogLine("2025-03-04T08:10:05+01:00\thabit\tread\t+1"),
        (LogEntry{march4 + 7h + 10min + 5s, 1h, Kind::Habit, u"read"_s, 1}));
    EXPECT_EQ(
        parseLogLine("2025-03-04T08:10:05Z\thabit\tread\t-12"),
        (LogEntry{march4 + 8h + 10min + 5s, 0h, Kind::Habit, u"read"_s, -12}));
    EXPECT_EQ(
        parseLogLine("2025-03-03T20:30:00-03:30\tchore\tDie Blumen gießen\tdone"),
        (LogEntry{march4, -(3h + 30min), Kind::Chore, u"Die Blumen gießen"_s, 1}));
    EXPECT_EQ(parseLogLine("2025-03-04T08:10:05Z\thabit\ta\t2")->change, 2);
}

TEST(LogEntry, ReadsItsOwnLines) {
    const QList<LogEntry> entries{
        {march4 + 1s, 0h, Kind::Habit, u"read"_s, 1},
        {march4, 5h + 45min, Kind::Habit, u"読む"_s, -8},
        {march4, -(9h + 30min), Kind::Chore, u"a b"_s, 1},
    };
    for (const LogEntry& entry : entries) {
        QByteArray line = logLine(entry);
        EXPECT_TRUE(line.endsWith('\n'));
        line.chop(1);
        EXPECT_EQ(parseLogLine(line), entry) << line.constData();
    }
    EXPECT_EQ(logLine(entries.first()), "2025-03-04T00:00:01+00:00\thabit\tread\t+1\n");
}

TEST(LogEntry, RefusesOtherLines) {
    for (const QByteArray line :
         {"",
          "2025-03-04T08:10:05Z",
          "2025-03-04T08:10:05Z\thabit\tread",
          "2025-03-04T08:10:05Z\thabit\tread\t+1\tmore",
          "2025-03-04T08:10:05\thabit\tread\t+1",
          "2025-03-04 08:10:05Z\thabit\tread\t+1",
          "2025-02-30T08:10:05Z\thabit\tread\t+1",
          "2025-03-04T24:10:05Z\thabit\tread\t+1",
          "2025-03-04T08:60:05Z\thabit\tread\t+1",
          "2025-03-04T08:10:60Z\thabit\tread\t+1",
          "2025-03-04T08:10:05+1:00\thabit\tread\t+1",
          "2025-03-04T08:10:05+25:00\thabit\tread\t+1",
          "2025-03-04T08:10:-5Z\thabit\tread\t+1",
          "2025-03-04T08:10:05Z\tsport\tread\t+1",
          "2025-03-04T08:10:05Z\thabit\t \t+1",
          "2025-03-04T08:10:05Z\thabit\tre\x01"
          "ad\t+1",
          "2025-03-04T08:10:05Z\thabit\tread\tdone",
          "2025-03-04T08:10:05Z\thabit\tread\t++1",
          "2025-03-04T08:10:05Z\thabit\tread\t+-1",
          "2025-03-04T08:10:05Z\thabit\tread\t1000001",
          "2025-03-04T08:10:05Z\tchore\tread\t+1"})
        EXPECT_EQ(parseLogLine(line), std::nullopt) << line.constData();
}

TEST(LogEntry, SkipsAndCountsWhatItCannotRead) {
    const LogEntries log = parseLog("# kept by hand\n"
                                    "\n"
                                    "2025-03-04T00:00:00Z\thabit\tread\t+1\r\n"
                                    "<<<<<<< HEAD\n"
                                    "2025-03-04T00:00:00Z\tchore\tplants\tdone\n"
                                    "2025-03-04T00:00");
    ASSERT_EQ(log.entries.size(), 2U);
    EXPECT_EQ(log.entries[0].id, u"read"_s);
    EXPECT_EQ(log.entries[1].id, u"plants"_s);
    EXPECT_EQ(log.skipped, 2);
    EXPECT_EQ(parseLog("").skipped, 0);
}

TEST(LogEntry, BelongsToTheDayOfItsPlace) {
    EXPECT_EQ(dayOf(march4, 0h, 0h), QDate(2025, 3, 4));
    EXPECT_EQ(dayOf(march4 - 1s, 0h, 0h), QDate(2025, 3, 3));
    EXPECT_EQ(dayOf(march4 - 1s, 1h, 0h), QDate(2025, 3, 4));
    EXPECT_EQ(dayOf(march4, -5h, 0h), QDate(2025, 3, 3));
    EXPECT_EQ(dayOf(march4 + 3h - 1s, 0h, 3h), QDate(2025, 3, 3));
    EXPECT_EQ(dayOf(march4 + 3h, 0h, 3h), QDate(2025, 3, 4));
}

TEST(LogEntry, KnowsTheOffsetsOfTheYear) {
    const QTimeZone berlin("Europe/Berlin");
    const std::chrono::sys_seconds spring = std::chrono::sys_days(2025y / 3 / 30) + 1h;
    EXPECT_EQ(offsetAt(spring - 1s, berlin), 1h);
    EXPECT_EQ(offsetAt(spring, berlin), 2h);
}

#include "companion/agenda/ZonedTime.h"

#include <QDateTime>

#include <gtest/gtest.h>

#include <map>

namespace lumora::companion::tests {

namespace {

constexpr qint64 hour = 3'600;
constexpr qint64 quarter = 900;

/// The first instants at which clocks show what, by looking at them all year long.
std::map<qint64, qint64> firstInstants(const OffsetAt& offsetAt, qint64 from, qint64 to) {
    std::map<qint64, qint64> instants;
    for (qint64 utc = from - 24 * hour; utc < to + 24 * hour; utc += quarter)
        instants.try_emplace(utc + offsetAt(utc), utc);
    return instants;
}

class ZonedTime : public testing::TestWithParam<const char*> {};

} // namespace

TEST_P(ZonedTime, IsTheFirstInstantThatClocksShowItAt) {
    const OffsetAt offsetAt = offsetsOf(QTimeZone(GetParam()));
    const qint64 from =
        QDateTime(QDate(2025, 1, 1), QTime(0, 0), QTimeZone::utc()).toSecsSinceEpoch();
    const qint64 to = from + 365 * 24 * hour;
    const auto instants = firstInstants(offsetAt, from, to);
    int missing = 0;
    for (qint64 local = from; local < to; local += quarter) {
        const qint64 utc = utcOf(offsetAt, local);
        if (const auto expected = instants.find(local); expected != instants.end()) {
            ASSERT_EQ(utc, expected->second) << local;
            continue;
        }
        ++missing;
        // As if clocks had not been put forward: by the offset of the day before.
        ASSERT_EQ(utc, local - offsetAt(local - 24 * hour)) << local;
    }
    EXPECT_LE(missing, 4); // an hour at most, once a year
}

INSTANTIATE_TEST_SUITE_P(
    Zones, ZonedTime,
    testing::Values(
        "Europe/Berlin", "America/New_York", "America/Santiago", "Australia/Lord_Howe",
        "Asia/Kathmandu", "Africa/Casablanca", "Pacific/Auckland"));

TEST(ZonedTimes, OfClocksThatNeverChangeAreOffByWhatTheyAreAhead) {
    EXPECT_EQ(utcOf([](qint64) { return 2 * hour; }, 5 * hour), 3 * hour);
    EXPECT_EQ(utcOf([](qint64) { return -2 * hour; }, 5 * hour), 7 * hour);
}

} // namespace lumora::companion::tests

#include "demo/DemoInstant.h"

#include "demo/DemoClock.h"

#include <gtest/gtest.h>

using namespace Qt::Literals::StringLiterals;
using namespace std::chrono_literals;
using namespace lumora;

namespace {

const QTimeZone kBerlin("Europe/Berlin");
const Instant kNoon = std::chrono::sys_days(std::chrono::year(2025) / 3 / 4) + 12h;

} // namespace

TEST(DemoInstant, ReadsTheOffsetOrElseTheZone) {
    EXPECT_EQ(demoInstantFrom(u"2025-03-04T12:00:00Z"_s, kBerlin), kNoon);
    EXPECT_EQ(demoInstantFrom(u"2025-03-04T14:00:00+02:00"_s, kBerlin), kNoon);
    EXPECT_EQ(demoInstantFrom(u"2025-03-04T13:00:00"_s, kBerlin), kNoon);
    EXPECT_EQ(demoInstantFrom(u"2025-03-04T13:00"_s, kBerlin), kNoon);
    EXPECT_EQ(demoInstantFrom(u"2025-03-04T12:00:00.250Z"_s, kBerlin), kNoon + 250ms);
}

TEST(DemoInstant, RefusesWhatIsNoInstantOrOutOfReach) {
    for (const auto& text :
         {u""_s, u"noon"_s, u"2025-03-04"_s, u"2025-02-30T12:00:00Z"_s, u"2025-03-04T25:00:00Z"_s,
          u"1999-12-31T23:59:59Z"_s, u"2200-01-01T00:00:00Z"_s})
        EXPECT_EQ(demoInstantFrom(text, kBerlin), std::nullopt) << text.toStdString();
}

TEST(DemoInstant, WritesLocalTimeWithItsOffset) {
    EXPECT_EQ(demoInstantText(kNoon, kBerlin), u"2025-03-04T13:00:00+01:00"_s);
    EXPECT_EQ(demoInstantText(kNoon, QTimeZone::utc()), u"2025-03-04T12:00:00Z"_s);
    EXPECT_EQ(
        demoInstantText(kNoon, QTimeZone("America/St_Johns")), u"2025-03-04T08:30:00-03:30"_s);
}

TEST(DemoInstant, TheDayIsTheZonesOwn) {
    EXPECT_EQ(demoDate(kNoon + 11h + 30min, kBerlin), QDate(2025, 3, 5));
    EXPECT_EQ(demoDate(kNoon + 11h + 30min, QTimeZone::utc()), QDate(2025, 3, 4));
}

TEST(DemoClock, RunsOnFromWhereItWasSet) {
    Instant real = kNoon;
    DemoClock clock([&] { return real; });
    EXPECT_EQ(clock.now(), kNoon);
    clock.set(kNoon - 48h);
    EXPECT_EQ(clock.now(), kNoon - 48h);
    real += 90s;
    EXPECT_EQ(clock.now(), kNoon - 48h + 90s);
}

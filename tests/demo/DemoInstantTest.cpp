#include "demo/DemoInstant.h"

#include "demo/DemoClock.h"

#include <gtest/gtest.h>

using namespace Qt::Literals::StringLiterals;
using namespace std::chrono_literals;
using namespace lumora;

namespace {

const QTimeZone kInstantBerlin("Europe/Berlin");
const Instant kInstantNoon = std::chrono::sys_days(std::chrono::year(2025) / 3 / 4) + 12h;

} // namespace

TEST(DemoInstant, ReadsTheOffsetOrElseTheZone) {
    EXPECT_EQ(demoInstantFrom(u"2025-03-04T12:00:00Z"_s, kInstantBerlin), kInstantNoon);
    EXPECT_EQ(demoInstantFrom(u"2025-03-04T14:00:00+02:00"_s, kInstantBerlin), kInstantNoon);
    EXPECT_EQ(demoInstantFrom(u"2025-03-04T13:00:00"_s, kInstantBerlin), kInstantNoon);
    EXPECT_EQ(demoInstantFrom(u"2025-03-04T13:00"_s, kInstantBerlin), kInstantNoon);
    EXPECT_EQ(demoInstantFrom(u"2025-03-04T12:00:00.250Z"_s, kInstantBerlin), kInstantNoon + 250ms);
}

TEST(DemoInstant, RefusesWhatIsNoInstantOrOutOfReach) {
    for (const auto& text :
         {u""_s, u"noon"_s, u"2025-03-04"_s, u"2025-02-30T12:00:00Z"_s, u"2025-03-04T25:00:00Z"_s,
          u"1999-12-31T23:59:59Z"_s, u"2200-01-01T00:00:00Z"_s})
        EXPECT_EQ(demoInstantFrom(text, kInstantBerlin), std::nullopt) << text.toStdString();
}

TEST(DemoInstant, WritesLocalTimeWithItsOffset) {
    EXPECT_EQ(demoInstantText(kInstantNoon, kInstantBerlin), u"2025-03-04T13:00:00+01:00"_s);
    EXPECT_EQ(demoInstantText(kInstantNoon, QTimeZone::utc()), u"2025-03-04T12:00:00Z"_s);
    EXPECT_EQ(
        demoInstantText(kInstantNoon, QTimeZone("America/St_Johns")),
        u"2025-03-04T08:30:00-03:30"_s);
}

TEST(DemoInstant, TheDayIsTheZonesOwn) {
    EXPECT_EQ(demoDate(kInstantNoon + 11h + 30min, kInstantBerlin), QDate(2025, 3, 5));
    EXPECT_EQ(demoDate(kInstantNoon + 11h + 30min, QTimeZone::utc()), QDate(2025, 3, 4));
}

TEST(DemoClock, RunsOnFromWhereItWasSet) {
    Instant real = kInstantNoon;
    DemoClock clock([&] { return real; });
    EXPECT_EQ(clock.now(), kInstantNoon);
    clock.set(kInstantNoon - 48h);
    EXPECT_EQ(clock.now(), kInstantNoon - 48h);
    real += 90s;
    EXPECT_EQ(clock.now(), kInstantNoon - 48h + 90s);
}

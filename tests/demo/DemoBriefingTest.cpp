#include "briefing/BriefingDecoder.h"
#include "briefing/MeetingSelection.h"
#include "demo/DemoService.h"

#include <gtest/gtest.h>

#include <vector>

using namespace Qt::Literals::StringLiterals;
using namespace std::chrono_literals;
using namespace lumora;

namespace {

/// Instants at and around every hour of days on which something happens to the calendar.
std::vector<Instant> awkwardInstants() {
    using std::chrono::year;
    std::vector<Instant> instants;
    for (const auto day :
         {year(2025) / 3 / 4, year(2025) / 3 / 30, year(2025) / 10 / 26, year(2024) / 2 / 29,
          year(2025) / 9 / 7, year(2025) / 12 / 31, year(2026) / 1 / 1}) {
        for (auto hour = 0h; hour < 24h; ++hour) {
            const Instant onTheHour = std::chrono::sys_days(day) + hour;
            instants.insert(instants.end(), {onTheHour - 1ms, onTheHour + 31min + 7s});
        }
    }
    return instants;
}

/// What the service answers a request for the briefing at `now`.
tl::expected<Briefing, DecodeError>
fetched(DemoScenario scenario, Instant now, const QTimeZone& zone) {
    DemoService service(scenario, "key", DemoClock([now] { return now; }), zone);
    return decodeBriefing(service.answer({"GET", "/api/briefing", "key", {}}).body);
}

class DemoBriefing : public testing::TestWithParam<const char*> {
protected:
    const QTimeZone zone = QTimeZone(GetParam());
};

const Instant kBriefingNoon = std::chrono::sys_days(std::chrono::year(2025) / 3 / 4) + 12h;

} // namespace

TEST_P(DemoBriefing, DecodesAtAnyTime) {
    for (const auto scenario : {DemoScenario::Busy, DemoScenario::Empty, DemoScenario::Quiet}) {
        for (const auto now : awkwardInstants()) {
            const auto briefing = fetched(scenario, now, zone);
            ASSERT_TRUE(briefing) << briefing.error().text().toStdString();
            ASSERT_EQ(briefing->spending.has_value(), scenario != DemoScenario::Empty);
        }
    }
}

TEST_P(DemoBriefing, HasTheMeetingsOfTheBusyDayAtAnyTime) {
    for (const auto now : awkwardInstants()) {
        const auto briefing = fetched(DemoScenario::Busy, now, zone).value();
        const auto next = upcomingMeeting(briefing, now, backgroundThreshold);
        ASSERT_TRUE(next && next->start);
        EXPECT_GE(*next->start - now, 12min);
        EXPECT_LT(*next->start - now, 13min);
        EXPECT_EQ(briefing.nextEvent, next);
        const auto running = meetingInProgress(briefing, now, backgroundThreshold);
        ASSERT_TRUE(running);
        EXPECT_EQ(running->title, u"Design review"_s);
        const auto later = now + 20min;
        EXPECT_EQ(meetingInProgress(briefing, later, backgroundThreshold)->title, next->title);
        EXPECT_GT(*upcomingMeeting(briefing, later, backgroundThreshold)->start - later, 30min);
    }
}

INSTANTIATE_TEST_SUITE_P(
    Zones, DemoBriefing,
    testing::Values("UTC", "Europe/Berlin", "America/Santiago", "Asia/Kolkata", "Pacific/Apia"));

TEST(DemoBriefingFaults, TheMalformedOneFailsAtItsDate) {
    const auto briefing = fetched(DemoScenario::Malformed, kBriefingNoon, QTimeZone::utc());
    ASSERT_FALSE(briefing);
    EXPECT_EQ(briefing.error().text(), u"eventsToday[3].start: Bad date: 2025-03-04"_s);
}

TEST(DemoBriefingFaults, TheLoginPageIsNoBriefing) {
    EXPECT_FALSE(fetched(DemoScenario::Html, kBriefingNoon, QTimeZone::utc()));
}

#include "companion/calendars/Outage.h"

#include <gtest/gtest.h>

using namespace Qt::Literals::StringLiterals;

namespace lumora::companion::tests {

namespace {

using std::chrono::hours;
using std::chrono::minutes;
using std::chrono::sys_seconds;

constexpr sys_seconds noon{std::chrono::seconds(1'741'086'000)};

// The title of the event after so long, or "" where there is none.
std::string titleAfter(std::chrono::minutes failed) {
    const auto event =
        outageEvent(u"Work"_s, noon - failed, noon, noon - hours(12), noon + hours(12));
    return event ? event->title.toStdString() : std::string();
}

} // namespace

TEST(Outage, IsNotWorthAWordAtFirst) {
    EXPECT_EQ(outageEvent(u"Work"_s, std::nullopt, noon, noon, noon), std::nullopt);
    EXPECT_EQ(titleAfter(minutes(179)), "");
    EXPECT_EQ(titleAfter(minutes(180)), "Work: not updated for 3 hours");
}

TEST(Outage, IsCountedInDaysAfterTwo) {
    EXPECT_EQ(titleAfter(hours(47)), "Work: not updated for 47 hours");
    EXPECT_EQ(titleAfter(hours(48)), "Work: not updated for 2 days");
    EXPECT_EQ(titleAfter(hours(24 * 9 + 23)), "Work: not updated for 9 days");
}

TEST(Outage, TakesTheWholeDay) {
    const auto event =
        outageEvent(u"Work"_s, noon - hours(4), noon, noon - hours(12), noon + hours(12));
    ASSERT_TRUE(event);
    EXPECT_TRUE(event->allDay);
    EXPECT_EQ(event->start, noon - hours(12));
    EXPECT_EQ(event->end, noon + hours(12));
    EXPECT_EQ(event->calendar, u"Work"_s);
}

} // namespace lumora::companion::tests

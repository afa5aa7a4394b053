#include "linux/time/TickPlan.h"

#include <gtest/gtest.h>

using namespace lumora;
using namespace std::chrono_literals;

namespace {

constexpr Instant start{1'700'000'000s};

struct Case {
    const char* name;
    std::chrono::microseconds now; ///< after `start`, at which the tick comes due
    std::chrono::seconds interval;
    bool due;
    std::chrono::microseconds deadline; ///< after `start`
};

class TickPlanTest : public testing::TestWithParam<Case> {};

} // namespace

TEST_P(TickPlanTest, Plans) {
    const Case& wanted = GetParam();
    const TickPlan plan = planTick(start, wanted.interval, start + wanted.now);
    EXPECT_EQ(plan.due, wanted.due);
    EXPECT_EQ((plan.deadline - start).count(), wanted.deadline.count());
}

INSTANTIATE_TEST_SUITE_P(
    All, TickPlanTest,
    testing::Values(
        Case{"OnTime", 0us, 30s, true, 30s}, Case{"ALittleLate", 1ms, 30s, true, 30s},
        Case{"JustBeforeTheNext", 30s - 1us, 30s, true, 30s},
        Case{"ExactlyOneIntervalLate", 30s, 30s, true, 60s},
        Case{"AfterASuspendOfAnHour", 1h + 7s, 30s, true, 1h + 30s},
        Case{"AfterASuspendOfAWeek", 168h + 1us, 600s, true, 168h + 600s},
        Case{"ClockSetForwardButNotDue", -10s, 30s, false, 0s},
        Case{"WokenJustTooEarly", -1us, 30s, false, 0s},
        Case{"ExactlyOneIntervalEarly", -30s, 30s, false, 0s},
        Case{"ClockSetBackAnHour", -1h, 30s, false, -1h + 30s},
        Case{
            "ClockSetBackToTheEpoch", -start.time_since_epoch(), 30s, false,
            -start.time_since_epoch() + 30s},
        Case{"OneSecond", 2500ms, 1s, true, 3s}),
    [](const auto& tested) { return tested.param.name; });

#include "linux/notifications/DeliveryPlan.h"

#include <gtest/gtest.h>

using namespace lumora;
using namespace Qt::Literals::StringLiterals;
using namespace std::chrono_literals;

namespace {

constexpr Instant now{1'731'700'800s};

NotificationRequest request(const QString& identifier, std::chrono::microseconds firesIn) {
    return {.identifier = identifier, .title = identifier, .fireTime = now + firesIn};
}

struct Case {
    const char* name;
    std::chrono::microseconds firesIn;
    bool due;
    bool waiting;
};

class DeliveryPlanTest : public testing::TestWithParam<Case> {};

} // namespace

TEST_P(DeliveryPlanTest, DecidesOnOne) {
    const auto only = request(u"a"_s, GetParam().firesIn);
    const DeliveryPlan plan = planDelivery({only}, now);
    EXPECT_EQ(plan.due == std::vector{only}, GetParam().due);
    EXPECT_EQ(plan.waiting == std::vector{only}, GetParam().waiting);
    EXPECT_EQ(
        plan.due.size() + plan.waiting.size(), GetParam().due || GetParam().waiting ? 1U : 0U);
    EXPECT_EQ(plan.nextTime, GetParam().waiting ? std::optional(only.fireTime) : std::nullopt);
}

INSTANTIATE_TEST_SUITE_P(
    All, DeliveryPlanTest,
    testing::Values(
        Case{"InAWeek", 168h, false, true}, Case{"InAMoment", 1us, false, true},
        Case{"Now", 0us, true, false}, Case{"ALittleLate", -1us, true, false},
        Case{"NineMinutesLate", -9min, true, false}, Case{"TenMinutesLate", -10min, true, false},
        Case{"JustOverTenMinutesLate", -10min - 1us, false, false},
        Case{"AWeekLate", -168h, false, false}),
    [](const auto& tested) { return tested.param.name; });

TEST(DeliveryPlan, OfNothingIsNothing) {
    EXPECT_EQ(planDelivery({}, now), DeliveryPlan());
}

TEST(DeliveryPlan, AfterALongSleepShowsOnlyWhatIsStillWorthIt) {
    const std::vector pending{
        request(u"later"_s, 2h),      request(u"lunch"_s, -3h),   request(u"soon"_s, 20min),
        request(u"running"_s, -4min), request(u"early"_s, -600s), request(u"missed"_s, -601s),
    };
    const DeliveryPlan plan = planDelivery(pending, now);
    EXPECT_EQ(plan.due, (std::vector{pending[4], pending[3]})); // the earliest first
    EXPECT_EQ(plan.waiting, (std::vector{pending[0], pending[2]}));
    EXPECT_EQ(plan.nextTime, now + 20min);
}

TEST(DeliveryPlan, AtEqualTimesKeepsTheGivenOrder) {
    const std::vector pending{request(u"b"_s, -1s), request(u"a"_s, -1s)};
    EXPECT_EQ(planDelivery(pending, now).due, pending);
}

#include "companion/agenda/Recurrence.h"

#include <gtest/gtest.h>

namespace lumora::companion::tests {

namespace {

const OffsetAt noOffset = [](qint64) { return 0; };
const CalendarTime firstDay{.local = 0, .isDate = false, .zone = {}};
constexpr TimeSpan tenDays{.from = 0, .to = 10 * secondsOfDay};

std::size_t count(const char* rule, RuleBudget& budget) {
    return ruleStarts(rule, firstDay, tenDays, noOffset, budget).size();
}

} // namespace

TEST(Recurrence, IsHeldToABudgetOfDates) {
    RuleBudget all;
    EXPECT_EQ(count("FREQ=DAILY", all), 10U);
    RuleBudget budget{.dates = 12, .eventDates = 8};
    EXPECT_EQ(count("FREQ=DAILY", budget), 8U);
    EXPECT_EQ(count("FREQ=DAILY", budget), 4U);
    EXPECT_EQ(count("FREQ=DAILY", budget), 0U);
}

TEST(Recurrence, IsHeldToABudgetOfTime) {
    RuleBudget budget;
    const auto before = budget.time;
    EXPECT_EQ(count("FREQ=DAILY", budget), 10U);
    EXPECT_LT(budget.time, before);
    EXPECT_GT(budget.time, before - std::chrono::seconds(1));
    budget.time = {};
    EXPECT_EQ(count("FREQ=DAILY", budget), 0U);
}

TEST(Recurrence, OfWhatIsNoRuleIsNone) {
    for (const char* const rule :
         {"", "FREQ=", "FREQ=SOMETIMES", "FREQ=DAILY;INTERVAL=0", "FREQ=HOURLY", "COUNT=2"}) {
        RuleBudget budget;
        EXPECT_EQ(count(rule, budget), 0U) << rule;
    }
}

} // namespace lumora::companion::tests

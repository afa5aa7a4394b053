#include "demo/DemoControl.h"

#include <gtest/gtest.h>

using namespace Qt::Literals::StringLiterals;
using namespace std::chrono_literals;
using namespace lumora;

namespace {

tl::expected<DemoControl, QString> parsed(const QByteArray& body) {
    return parseDemoControl(body, QTimeZone::utc());
}

const Instant kControlNoon = std::chrono::sys_days(std::chrono::year(2025) / 3 / 4) + 12h;

} // namespace

TEST(DemoControl, EveryMemberIsOptional) {
    const auto control = parsed("{}");
    ASSERT_TRUE(control);
    EXPECT_FALSE(
        control->scenario || control->now || control->advance || control->dayFrom ||
        control->shiftDay);
}

TEST(DemoControl, ReadsEveryMember) {
    const auto absolute = parsed(
        R"({"scenario":"flaky","now":"2025-03-04T12:00:00Z","dayFrom":"2025-03-04T13:00:00+01:00"})");
    ASSERT_TRUE(absolute);
    EXPECT_EQ(absolute->scenario, DemoScenario::Flaky);
    EXPECT_EQ(absolute->now, kControlNoon);
    EXPECT_EQ(absolute->dayFrom, kControlNoon);
    const auto relative = parsed(R"({"advanceSeconds":1.5,"shiftDaySeconds":-1200})");
    ASSERT_TRUE(relative);
    EXPECT_EQ(relative->advance, Seconds(1.5));
    EXPECT_EQ(relative->shiftDay, Seconds(-1200));
}

TEST(DemoControl, RefusesTheRest) {
    for (const QByteArray body :
         {"", "[]", "null", "{", R"({"speed":2})", R"({"scenario":"weekend"})", R"({"scenario":1})",
          R"({"now":"2025-03-04"})", R"({"now":5})", R"({"advanceSeconds":"60"})",
          R"({"advanceSeconds":1e300})", R"({"dayFrom":null})", R"({"shiftDaySeconds":true})",
          R"({"now":"2025-03-04T12:00:00Z","advanceSeconds":1})",
          R"({"dayFrom":"2025-03-04T12:00:00Z","shiftDaySeconds":1})"}) {
        const auto control = parsed(body);
        ASSERT_FALSE(control) << body.toStdString();
        EXPECT_FALSE(control.error().isEmpty());
    }
}

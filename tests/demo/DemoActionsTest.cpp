#include "demo/DemoActions.h"

#include <gtest/gtest.h>

#include <algorithm>

using namespace Qt::Literals::StringLiterals;
using namespace std::chrono_literals;
using namespace lumora;

namespace {

const Instant kNoon = std::chrono::sys_days(std::chrono::year(2025) / 3 / 4) + 12h;

class DemoActions : public testing::Test {
protected:
    DemoData data = initialDemoData(DemoScenario::Busy, kNoon, QTimeZone::utc());

    tl::expected<QJsonObject, DemoFault> perform(const QByteArray& body, Instant now = kNoon) {
        return performDemoAction(data, body, now);
    }

    void expectAccepted(const QByteArray& body) {
        const auto reply = perform(body);
        ASSERT_TRUE(reply) << reply.error().message.toStdString();
        EXPECT_EQ(*reply, (QJsonObject{{u"ok"_s, true}}));
    }

    const DemoHabit& habit(const QString& id) const {
        return *std::ranges::find(data.habits, id, &DemoHabit::id);
    }

    void settle(Instant now) { settleSpending(data, now, QTimeZone::utc()); }
};

} // namespace

TEST_F(DemoActions, AHabitWantedOnceFlips) {
    ASSERT_FALSE(habit(u"read"_s).isDone());
    const int streak = habit(u"read"_s).streak;
    expectAccepted(R"({"type":"habit.toggle","id":"read"})");
    EXPECT_TRUE(habit(u"read"_s).isDone());
    EXPECT_EQ(habit(u"read"_s).count, 1);
    EXPECT_EQ(habit(u"read"_s).streak, streak + 1);
    expectAccepted(R"({"type":"habit.toggle","id":"read"})");
    EXPECT_FALSE(habit(u"read"_s).isDone());
    EXPECT_EQ(habit(u"read"_s).count, 0);
    EXPECT_EQ(habit(u"read"_s).streak, streak);
}

TEST_F(DemoActions, ACountedHabitCountsUpAndStartsOverWhenFull) {
    for (int count = 3; count <= 7; ++count) {
        expectAccepted(R"({"type":"habit.toggle","id":"water"})");
        EXPECT_EQ(habit(u"water"_s).count, count);
        EXPECT_FALSE(habit(u"water"_s).isDone());
        EXPECT_EQ(habit(u"water"_s).streak, 0);
    }
    expectAccepted(R"({"type":"habit.toggle","id":"water"})");
    EXPECT_TRUE(habit(u"water"_s).isDone());
    EXPECT_EQ(habit(u"water"_s).streak, 1);
    expectAccepted(R"({"type":"habit.toggle","id":"water"})");
    EXPECT_EQ(habit(u"water"_s).count, 0);
    EXPECT_FALSE(habit(u"water"_s).isDone());
    EXPECT_EQ(habit(u"water"_s).streak, 0);
}

TEST_F(DemoActions, OtherHabitsStayAsTheyAre) {
    expectAccepted(R"({"type":"habit.toggle","id":"read"})");
    EXPECT_EQ(habit(u"water"_s).count, 2);
    EXPECT_TRUE(habit(u"stretch"_s).isDone());
}

TEST_F(DemoActions, ADoneChoreIsNoLongerDue) {
    const auto before = data.chores.size();
    expectAccepted(R"({"type":"chore.done","id":"plants"})");
    EXPECT_EQ(data.chores.size(), before - 1);
    EXPECT_EQ(std::ranges::count(data.chores, u"plants"_s, &DemoChore::id), 0);
    const auto again = perform(R"({"type":"chore.done","id":"plants"})");
    ASSERT_FALSE(again);
    EXPECT_EQ(again.error().status, 404);
}

TEST_F(DemoActions, CapturesKeepTheTextAsItCame) {
    expectAccepted(R"({"type":"capture","text":"call back about the קוד 👩🏽‍💻"})");
    expectAccepted(R"({"type":"capture","text":"second"})");
    ASSERT_EQ(data.inbox.size(), 2);
    EXPECT_EQ(data.inbox[0].text, u"call back about the קוד 👩🏽‍💻"_s);
    EXPECT_EQ(data.inbox[0].at, kNoon);
    EXPECT_EQ(data.inbox[1].text, u"second"_s);
}

TEST_F(DemoActions, NewSpendingFiguresComeFourSecondsLater) {
    const auto before = *data.spending;
    ASSERT_TRUE(before.stale);
    EXPECT_EQ(
        perform(R"({"type":"spending.refresh"})"),
        (QJsonObject{{u"ok"_s, true}, {u"queued"_s, true}}));
    settle(kNoon + 3999ms);
    EXPECT_EQ(data.spending->generatedAt, before.generatedAt);
    EXPECT_TRUE(data.spending->stale);
    settle(kNoon + 4s);
    EXPECT_NE(data.spending->generatedAt, before.generatedAt);
    EXPECT_FALSE(data.spending->stale);
    EXPECT_EQ(data.spending->asOf, u"2025-03-04"_s);
    EXPECT_GT(data.spending->monthToDate, before.monthToDate);
    const auto landed = *data.spending;
    settle(kNoon + 1h);
    EXPECT_EQ(data.spending->generatedAt, landed.generatedAt);
    EXPECT_EQ(data.spending->monthToDate, landed.monthToDate);
}

TEST_F(DemoActions, ASecondSpendingRefreshWithinAMinuteIsDeclined) {
    ASSERT_TRUE(perform(R"({"type":"spending.refresh"})"));
    const auto declined = perform(R"({"type":"spending.refresh"})", kNoon + 59s);
    EXPECT_EQ(
        declined, (QJsonObject{
                      {u"ok"_s, true},
                      {u"queued"_s, false},
                      {u"reason"_s, u"Spending was refreshed less than a minute ago"_s}}));
    const auto taken = perform(R"({"type":"spending.refresh"})", kNoon + 60s);
    ASSERT_TRUE(taken);
    EXPECT_TRUE(taken->value(u"queued"_s).toBool());
}

TEST_F(DemoActions, AClockSetBackDoesNotHoldSpendingUp) {
    ASSERT_TRUE(perform(R"({"type":"spending.refresh"})"));
    settle(kNoon - 1h);
    EXPECT_FALSE(data.spending->stale);
    EXPECT_TRUE(perform(R"({"type":"spending.refresh"})", kNoon - 1h)->value(u"queued"_s).toBool());
}

TEST_F(DemoActions, WithoutSpendingThereIsNothingToRefresh) {
    data.spending.reset();
    const auto reply = perform(R"({"type":"spending.refresh"})");
    ASSERT_TRUE(reply);
    EXPECT_EQ(reply->value(u"queued"_s), QJsonValue(false));
    EXPECT_FALSE(reply->value(u"reason"_s).toString().isEmpty());
    settle(kNoon + 1h);
    EXPECT_FALSE(data.spending);
}

TEST_F(DemoActions, RefusalsSayWhyAndChangeNothing) {
    const std::pair<QByteArray, int> refused[] = {
        {"", 400},
        {"nonsense", 400},
        {"[]", 400},
        {"{}", 400},
        {R"({"type":5})", 400},
        {R"({"type":"habit.untoggle","id":"read"})", 400},
        {R"({"type":"habit.toggle"})", 400},
        {R"({"type":"habit.toggle","id":7})", 400},
        {R"({"type":"habit.toggle","id":"plants"})", 404},
        {R"({"type":"chore.done"})", 400},
        {R"({"type":"chore.done","id":"read"})", 404},
        {R"({"type":"capture"})", 400},
        {R"({"type":"capture","text":" \n"})", 400},
    };
    const auto habits = data.habits.size();
    const auto chores = data.chores.size();
    for (const auto& [body, status] : refused) {
        const auto reply = perform(body);
        ASSERT_FALSE(reply) << body.toStdString();
        EXPECT_EQ(reply.error().status, status) << body.toStdString();
        EXPECT_FALSE(reply.error().message.isEmpty());
    }
    EXPECT_EQ(data.habits.size(), habits);
    EXPECT_EQ(data.chores.size(), chores);
    EXPECT_TRUE(data.inbox.isEmpty());
    EXPECT_FALSE(data.spending->refreshAsked);
}

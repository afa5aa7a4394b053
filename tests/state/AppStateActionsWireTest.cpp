#include "demo/DemoServer.h"
#include "demo/DemoService.h"
#include "linux/http/CurlHttpTransport.h"
#include "platform/Background.h"
#include "service/LumoAction.h"
#include "support/Patience.h"
#include "support/StateHarness.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QTest>

#include <gtest/gtest.h>

#include <algorithm>
#include <atomic>

using namespace lumora;
using namespace lumora::tests;
using namespace Qt::Literals::StringLiterals;
using namespace std::chrono_literals;

namespace {

using Waits = std::vector<std::chrono::milliseconds>;

/// The state over real sockets against the demo's service. Time alone is not real: both sides see
/// the same, and only the test moves it.
class AppStateActionsWireTest : public testing::Test {
protected:
    explicit AppStateActionsWireTest(DemoScenario scenario = DemoScenario::Busy)
        : service(
              scenario, "key", DemoClock([this] { return serviceTime.load(); }), QTimeZone::utc()) {
    }

    void SetUp() override {
        const auto port = server.start(0);
        ASSERT_TRUE(port) << qPrintable(port.error());
        preferences.set(u"endpointURL"_s, u" http://127.0.0.1:%1/api/briefing "_s.arg(*port));
        EXPECT_TRUE(keychain.setToken(u"key"_s));
        state.emplace(
            AppState::Dependencies{clock, preferences, secrets, keychain, client, reminders, wake});
        ASSERT_TRUE(eventuallyInTime([this] { return state->state().isLoaded(); }));
    }

    template <typename Condition>
    static bool eventually(Condition condition) {
        return QTest::qWaitFor(condition, patience);
    }

    /// The same, with time passing during waits.
    template <typename Condition>
    bool eventuallyInTime(Condition condition) {
        return eventually([&] {
            if (clock.pendingWaitCount() > 0)
                pass(500ms);
            return condition();
        });
    }

    template <typename T>
    bool completes(const QCoro::Task<T>& task) {
        return eventuallyInTime([&] { return task.isReady(); });
    }

    void pass(std::chrono::milliseconds duration) {
        serviceTime = serviceTime.load() + duration;
        clock.advance(duration);
    }

    bool isDone(const QString& habit) const {
        return std::ranges::find(state->lastGood()->habits.items, habit, &Habit::id)->done;
    }

    bool isDue(const QString& chore) const {
        const auto& due = state->lastGood()->chores.top;
        return std::ranges::find(due, chore, &Chore::id) != due.end();
    }

    QStringList inbox() {
        const auto answer = service.answer({"GET", "/api/inbox", "key", {}});
        QStringList texts;
        for (const QJsonValue entry : QJsonDocument::fromJson(answer.body).array())
            texts.append(entry[u"text"_s].toString());
        return texts;
    }

    std::atomic<Instant> serviceTime{FakeClock::defaultStart};
    DemoService service;
    DemoServer server{service};
    Background background;
    FakeClock clock;
    FakePreferences preferences;
    FakeSecretStore secrets;
    CurlHttpTransport transport{{5s, 10s, 1'000'000}};
    WakeMonitor wake;
    RecordingReminders reminders;
    KeychainService keychain{secrets};
    LumoService client{transport, keychain, clock, background};
    std::optional<AppState> state;
};

class FlakyWireTest : public AppStateActionsWireTest {
protected:
    FlakyWireTest()
        : AppStateActionsWireTest(DemoScenario::Flaky) {}
};

} // namespace

TEST_F(AppStateActionsWireTest, AToggledHabitIsShownWithItsNewState) {
    ASSERT_FALSE(isDone(u"read"_s));
    const auto task = state->perform(LumoAction::habitToggle(u"read"_s), u"habit:read"_s);
    EXPECT_TRUE(state->pending().contains(u"habit:read"_s));
    ASSERT_TRUE(completes(task));
    EXPECT_TRUE(isDone(u"read"_s));
    EXPECT_TRUE(state->pending().empty());
    EXPECT_FALSE(state->actionError());
    const auto back = state->perform(LumoAction::habitToggle(u"read"_s), u"habit:read"_s);
    ASSERT_TRUE(completes(back));
    EXPECT_FALSE(isDone(u"read"_s));
}

TEST_F(AppStateActionsWireTest, TwoHabitsAtOnceAreBothToggled) {
    const auto first = state->perform(LumoAction::habitToggle(u"read"_s), u"habit:read"_s);
    const auto second = state->perform(LumoAction::habitToggle(u"walk"_s), u"habit:walk"_s);
    ASSERT_TRUE(completes(first));
    ASSERT_TRUE(completes(second));
    EXPECT_TRUE(isDone(u"read"_s));
    EXPECT_TRUE(isDone(u"walk"_s));
}

TEST_F(AppStateActionsWireTest, AChoreThatIsDoneIsNoLongerDue) {
    ASSERT_TRUE(isDue(u"plants"_s));
    const auto task = state->perform(LumoAction::choreDone(u"plants"_s), u"chore:plants"_s);
    ASSERT_TRUE(completes(task));
    EXPECT_FALSE(isDue(u"plants"_s));
}

TEST_F(AppStateActionsWireTest, WhatTheServiceRefusesIsShownInItsWords) {
    const auto task = state->perform(LumoAction::choreDone(u"no \"such\""_s), u"chore:none"_s);
    ASSERT_TRUE(completes(task));
    EXPECT_EQ(state->actionError(), u"There is no chore \"no \"such\"\" due"_s);
    EXPECT_TRUE(clock.waits().empty());
}

TEST_F(AppStateActionsWireTest, AThoughtReachesTheInboxAsItWasMeant) {
    const QString thought = u"call \"Ann\" \\ about\nthe קוד 👩🏽‍💻"_s;
    const auto task = state->capture(u" \n"_s + thought + u"\n "_s);
    ASSERT_TRUE(completes(task));
    EXPECT_FALSE(state->actionError());
    EXPECT_EQ(inbox(), QStringList{thought});
}

TEST_F(AppStateActionsWireTest, SpendingIsRefreshedAndThenDeclined) {
    const double before = state->lastGood()->spending->generatedAt;
    const auto queued = state->refreshSpending();
    const auto waitsAgain = [this](std::size_t count) {
        return eventually([&] { return clock.waits().size() == count; });
    };
    ASSERT_TRUE(waitsAgain(1));
    pass(3s);
    ASSERT_TRUE(waitsAgain(2));
    EXPECT_EQ(state->lastGood()->spending->generatedAt, before);
    EXPECT_TRUE(state->pending().contains(u"spending"_s));
    pass(6s);
    ASSERT_TRUE(eventually([&] { return queued.isReady(); }));
    EXPECT_NE(state->lastGood()->spending->generatedAt, before);
    EXPECT_FALSE(state->lastGood()->spending->stale);
    EXPECT_TRUE(state->pending().empty());
    EXPECT_FALSE(state->actionError());
    EXPECT_EQ(clock.waits(), (Waits{3s, 6s}));

    const auto declined = state->refreshSpending();
    ASSERT_TRUE(completes(declined));
    EXPECT_EQ(state->actionError(), u"Spending was refreshed less than a minute ago"_s);
    EXPECT_TRUE(state->pending().empty());
    EXPECT_EQ(clock.waits().size(), 2U);
}

TEST_F(FlakyWireTest, AnActionIsTriedUntilTheServiceTakesItAndTakenOnce) {
    ASSERT_EQ(clock.waits(), (Waits{500ms, 1000ms})); // for the first briefing
    const auto task = state->perform(LumoAction::habitToggle(u"read"_s), u"habit:read"_s);
    ASSERT_TRUE(completes(task));
    EXPECT_FALSE(state->actionError());
    EXPECT_TRUE(isDone(u"read"_s));
    EXPECT_EQ(clock.waits().size(), 6U); // and for the action and its refresh
}

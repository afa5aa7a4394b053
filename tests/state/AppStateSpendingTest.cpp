#include "service/LumoAction.h"
#include "support/StateHarness.h"

#include <QSignalSpy>

#include <gtest/gtest.h>

using namespace lumora;
using namespace lumora::tests;
using namespace Qt::Literals::StringLiterals;
using namespace std::chrono_literals;

namespace {

using Keys = std::set<QString>;
using Waits = std::vector<std::chrono::milliseconds>;

const Keys spendingKey{u"spending"_s};

/// A briefing whose spending figures carry `stamp`; absent: it has none.
QByteArray bodyWithSpending(std::optional<double> stamp) {
    QByteArray body = briefingBody(1);
    if (stamp) {
        body.chop(1);
        body += R"(,"spending":{"mtd":1,"sameDayLastMonth":1,"top":[],"asOf":"2025-03-04",)"
                R"("stale":false,"generatedAt":)" +
                QByteArray::number(*stamp, 'g', 17) + "}}";
    }
    return body;
}

class AppStateSpendingTest : public testing::Test, protected StateHarness {
protected:
    /// Starts with spending figures of `stamp` in place.
    void begin(std::optional<double> stamp) {
        prepare(stamp);
        start();
        ASSERT_TRUE(state->lastGood());
    }

    /// Prepares a briefing with figures of `stamp`.
    void prepare(std::optional<double> stamp) {
        transport.prepare(FakeHttpTransport::answer(200, bodyWithSpending(stamp)));
    }

    /// Asks for new figures, which the service answers with `reply`.
    QCoro::Task<> refreshSpending(const QByteArray& reply = R"({"ok": true, "queued": true})") {
        transport.prepare(FakeHttpTransport::answer(200, reply));
        return state->refreshSpending();
    }

    /// The requests after the first refresh and the action.
    std::size_t refreshCount() const { return transport.requests().size() - 2; }
};

} // namespace

TEST_F(AppStateSpendingTest, AsksTheServiceForNewFigures) {
    begin(10);
    const QSignalSpy changed(&*state, &AppState::changed);
    spawn(state->refreshSpending());
    EXPECT_EQ(state->pending(), spendingKey);
    EXPECT_EQ(changed.count(), 1);
    ASSERT_EQ(transport.requests().size(), 2U);
    EXPECT_EQ(transport.requests()[1].method, "POST");
    EXPECT_EQ(transport.requests()[1].url, QUrl(u"https://day.example/api/briefing/action"_s));
    EXPECT_EQ(transport.requests()[1].body, R"({"type":"spending.refresh"})");
    EXPECT_TRUE(clock.waits().empty());
}

TEST_F(AppStateSpendingTest, EndsWithTheFirstRefreshThatBringsNewFigures) {
    begin(10);
    const auto task = refreshSpending();
    prepare(10);
    prepare(10.001);
    clock.advance(3s - 1ms);
    EXPECT_EQ(refreshCount(), 0U);
    clock.advance(1ms);
    EXPECT_EQ(refreshCount(), 1U);
    EXPECT_EQ(state->pending(), spendingKey);
    clock.advance(6s - 1ms);
    EXPECT_EQ(refreshCount(), 1U);
    clock.advance(1ms);
    EXPECT_EQ(refreshCount(), 2U);
    EXPECT_TRUE(task.isReady());
    EXPECT_TRUE(state->pending().empty());
    EXPECT_FALSE(state->actionError());
    EXPECT_EQ(clock.pendingWaitCount(), 0U);
}

TEST_F(AppStateSpendingTest, TheKeyIsFreeOnlyWhenTheFiguresAreInPlace) {
    begin(10);
    refreshSpending();
    prepare(11);
    std::vector<std::pair<double, Keys>> seen;
    QObject::connect(&*state, &AppState::changed, &*state, [&] {
        seen.emplace_back(state->lastGood()->spending->generatedAt, state->pending());
    });
    clock.advance(3s);
    EXPECT_EQ(seen, (std::vector<std::pair<double, Keys>>{{11, spendingKey}, {11, {}}}));
}

TEST_F(AppStateSpendingTest, OlderFiguresAreNewToo) {
    begin(10);
    const auto task = refreshSpending();
    prepare(9);
    clock.advance(3s);
    EXPECT_TRUE(task.isReady());
}

TEST_F(AppStateSpendingTest, GivesUpSilentlyAfterEightRefreshesAnd69Seconds) {
    begin(10);
    const auto task = refreshSpending();
    for (int i = 0; i < 9; ++i)
        prepare(10);
    clock.advance(69s - 1ms);
    EXPECT_EQ(refreshCount(), 7U);
    EXPECT_EQ(state->pending(), spendingKey);
    EXPECT_FALSE(task.isReady());
    clock.advance(1ms);
    EXPECT_EQ(refreshCount(), 8U);
    EXPECT_TRUE(task.isReady());
    EXPECT_TRUE(state->pending().empty());
    EXPECT_FALSE(state->actionError());
    EXPECT_EQ(clock.waits(), (Waits{3s, 6s, 10s, 10s, 10s, 10s, 10s, 10s}));
    clock.advance(1min);
    EXPECT_EQ(refreshCount(), 8U);
}

TEST_F(AppStateSpendingTest, TheNextWaitBeginsWhenTheRefreshHasEnded) {
    begin(10);
    refreshSpending();
    clock.advance(5s);
    EXPECT_EQ(refreshCount(), 1U);
    EXPECT_EQ(clock.waits(), (Waits{3s}));
    transport.complete(2, FakeHttpTransport::answer(200, bodyWithSpending(10)));
    EXPECT_EQ(clock.waits(), (Waits{3s, 6s}));
    clock.advance(6s - 1ms);
    EXPECT_EQ(refreshCount(), 1U);
}

TEST_F(AppStateSpendingTest, WithoutFiguresBeforeAnyFiguresAreNew) {
    begin(std::nullopt);
    const auto task = refreshSpending();
    prepare(std::nullopt);
    prepare(0);
    clock.advance(3s);
    EXPECT_FALSE(task.isReady());
    clock.advance(6s);
    EXPECT_TRUE(task.isReady());
    EXPECT_TRUE(state->pending().empty());
}

TEST_F(AppStateSpendingTest, WithoutABriefingBeforeAnyFiguresAreNew) {
    transport.prepare(FakeHttpTransport::answer(401));
    start();
    ASSERT_FALSE(state->lastGood());
    const auto task = refreshSpending();
    prepare(10);
    clock.advance(3s);
    EXPECT_TRUE(task.isReady());
}

TEST_F(AppStateSpendingTest, FiguresThatVanishAreNotNew) {
    begin(10);
    const auto task = refreshSpending();
    prepare(std::nullopt);
    prepare(11);
    clock.advance(3s);
    EXPECT_FALSE(task.isReady());
    clock.advance(6s);
    EXPECT_TRUE(task.isReady());
}

TEST_F(AppStateSpendingTest, RefreshesThatFailCountAndChangeNothingElse) {
    begin(10);
    const auto task = refreshSpending();
    transport.prepare(FakeHttpTransport::answer(401));
    clock.advance(3s);
    EXPECT_TRUE(state->state().isFailed());
    keychain.deleteToken();
    clock.advance(66s);
    EXPECT_EQ(refreshCount(), 1U);
    EXPECT_TRUE(task.isReady());
    EXPECT_TRUE(state->pending().empty());
    EXPECT_FALSE(state->actionError());
    EXPECT_EQ(clock.waits().size(), 8U);
}

TEST_F(AppStateSpendingTest, FiguresThatCameWithAnotherRefreshAreNoticedAtTheNext) {
    begin(10);
    const auto task = refreshSpending();
    prepare(11);
    spawn(state->refresh());
    EXPECT_EQ(state->pending(), spendingKey);
    prepare(11);
    clock.advance(3s);
    EXPECT_TRUE(task.isReady());
    EXPECT_EQ(refreshCount(), 2U);
}

TEST_F(AppStateSpendingTest, FiguresThatCameWhileTheServiceWasAskedAreNew) {
    begin(10);
    const auto task = state->refreshSpending();
    prepare(11);
    spawn(state->refresh());
    ASSERT_EQ(state->lastGood()->spending->generatedAt, 11);
    transport.complete(1, FakeHttpTransport::answer(200, R"({"queued": true})"));
    prepare(11);
    clock.advance(3s);
    EXPECT_TRUE(task.isReady());
}

TEST_F(AppStateSpendingTest, ADeclinedRefreshSaysSo) {
    const std::pair<QByteArray, QString> rows[] = {
        {R"({"ok": true, "queued": false})", u"Spending was refreshed recently"_s},
        {R"({"queued": false, "reason": null})", u"Spending was refreshed recently"_s},
        {R"({"ok": true, "queued": false, "reason": "R"})", u"R"_s},
        {R"({"ok": false, "queued": false, "reason": ""})", u""_s},
    };
    begin(10);
    for (const auto& [reply, message] : rows) {
        using Seen = std::pair<std::optional<QString>, Keys>;
        const auto seen = watch([this] { return Seen(state->actionError(), state->pending()); });
        const auto task = refreshSpending(reply);
        EXPECT_TRUE(task.isReady());
        EXPECT_EQ(state->actionError(), message) << reply.constData();
        EXPECT_EQ(*seen, (std::vector<Seen>{{std::nullopt, spendingKey}, {message, {}}}));
        EXPECT_TRUE(state->pending().empty());
    }
    EXPECT_EQ(transport.requests().size(), 1 + std::size(rows));
    EXPECT_TRUE(clock.waits().empty());
}

TEST_F(AppStateSpendingTest, EveryOtherReplyMeansThatFiguresWillCome) {
    begin(10);
    for (const QByteArray reply :
         {"", "{}", R"({"queued": true})", R"({"queued": null, "reason": "R"})",
          R"({"ok": false, "reason": "R"})", R"({"queued": "false"})"}) {
        const std::size_t waitsBefore = clock.waits().size();
        const auto task = refreshSpending(reply);
        EXPECT_EQ(state->pending(), spendingKey) << reply.constData();
        EXPECT_EQ(clock.waits().size(), waitsBefore + 1) << reply.constData();
        prepare(state->lastGood()->spending->generatedAt + 1);
        clock.advance(3s);
        EXPECT_TRUE(task.isReady()) << reply.constData();
        EXPECT_FALSE(state->actionError()) << reply.constData();
    }
}

TEST_F(AppStateSpendingTest, AFailureIsShownWithoutWaiting) {
    begin(10);
    transport.prepare(FakeHttpTransport::answer(409, R"({"error": "E"})"));
    const auto task = state->refreshSpending();
    EXPECT_TRUE(task.isReady());
    EXPECT_EQ(state->actionError(), u"E"_s);
    EXPECT_TRUE(state->pending().empty());
    EXPECT_TRUE(clock.waits().empty());
    EXPECT_EQ(refreshCount(), 0U);
}

TEST_F(AppStateSpendingTest, ASecondRequestIsRefusedWhileTheFirstIsInFlight) {
    begin(10);
    const auto first = refreshSpending();
    transport.prepare(FakeHttpTransport::answer(409, R"({"error": "E"})"));
    spawn(state->capture(u"milk"_s));
    const QSignalSpy changed(&*state, &AppState::changed);
    const auto second = state->refreshSpending();
    EXPECT_TRUE(second.isReady());
    EXPECT_EQ(transport.requests().size(), 3U);
    EXPECT_EQ(state->actionError(), u"E"_s);
    EXPECT_EQ(changed.count(), 0);
    prepare(11);
    clock.advance(3s);
    EXPECT_TRUE(first.isReady());
    EXPECT_EQ(state->actionError(), u"E"_s);
}

TEST_F(AppStateSpendingTest, OtherActionsProceedDuringTheWait) {
    begin(10);
    refreshSpending();
    transport.prepare(FakeHttpTransport::answer(200));
    prepare(10);
    const auto task = state->capture(u"milk"_s);
    EXPECT_TRUE(task.isReady());
    EXPECT_EQ(state->pending(), spendingKey);
}

TEST_F(AppStateSpendingTest, MayEndWhileTheServiceIsAsked) {
    begin(10);
    const auto task = state->refreshSpending();
    state.reset();
    transport.complete(1, FakeHttpTransport::answer(200));
    EXPECT_TRUE(task.isReady());
    EXPECT_TRUE(clock.waits().empty());
}

TEST_F(AppStateSpendingTest, MayEndDuringTheWait) {
    begin(10);
    const auto task = refreshSpending();
    state.reset();
    clock.advance(1h);
    EXPECT_TRUE(task.isReady());
    EXPECT_EQ(clock.waits(), (Waits{3s}));
    EXPECT_EQ(refreshCount(), 0U);
}

TEST_F(AppStateSpendingTest, MayEndDuringARefreshOfTheWait) {
    begin(10);
    const auto task = refreshSpending();
    clock.advance(3s);
    state.reset();
    transport.complete(2, FakeHttpTransport::answer(200, bodyWithSpending(10)));
    EXPECT_TRUE(task.isReady());
    EXPECT_EQ(clock.waits(), (Waits{3s}));
}

TEST(AppStateSpending, TheWaitEndsWithTheClock) {
    std::optional<QCoro::Task<>> task;
    {
        StateHarness harness;
        harness.transport.prepare(FakeHttpTransport::answer(200, bodyWithSpending(10)));
        harness.start();
        harness.transport.prepare(FakeHttpTransport::answer(200));
        task.emplace(harness.state->refreshSpending());
        ASSERT_EQ(harness.clock.pendingWaitCount(), 1U);
    }
    EXPECT_TRUE(task->isReady());
}

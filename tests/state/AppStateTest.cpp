#include "state/AppState.h"

#include "support/StateHarness.h"

#include <QSignalSpy>

#include <gtest/gtest.h>

using namespace lumora;
using namespace lumora::tests;
using namespace Qt::Literals::StringLiterals;
using namespace std::chrono_literals;

namespace {

class AppStateTest : public testing::Test, protected StateHarness {
protected:
    std::size_t requestCount() const { return transport.requests().size(); }

    QString failure() const { return state->state().failureMessage().value_or(QString()); }

    /// The states that are published from now on, a failure by its message.
    auto watchStates() {
        return watch(
            [this] { return state->state().isFailed() ? failure() : state->state().name(); });
    }

    /// Starts, and answers the first refresh.
    AppState& startLoaded(double generatedAt) {
        start();
        answer(0, generatedAt);
        return *state;
    }
};

const QString notConfigured = u"Not configured — open Settings"_s;

} // namespace

TEST_F(AppStateTest, FetchesAsSoonAsItExists) {
    start();
    ASSERT_EQ(requestCount(), 1U);
    EXPECT_EQ(transport.requests()[0].url, QUrl(u"https://day.example/api/briefing"_s));
    EXPECT_TRUE(state->state().isLoading());
}

TEST_F(AppStateTest, StartsWithNothing) {
    state.emplace(
        AppState::Dependencies{clock, preferences, secrets, keychain, service, reminders, wake});
    EXPECT_TRUE(state->state().isIdle());
    EXPECT_FALSE(state->lastGood());
    EXPECT_FALSE(state->lastUpdated());
    EXPECT_TRUE(state->pending().empty());
    EXPECT_FALSE(state->actionError());
}

TEST_F(AppStateTest, ASuccessIsStoredStampedPublishedAndHandedOn) {
    start();
    const QSignalSpy changed(&*state, &AppState::changed);
    clock.advance(2s);
    answer(0, 7);
    EXPECT_TRUE(state->state().isLoaded());
    ASSERT_TRUE(state->lastGood());
    EXPECT_EQ(state->lastGood()->generatedAt, 7);
    EXPECT_EQ(state->lastUpdated(), FakeClock::defaultStart + 2s);
    EXPECT_EQ(changed.count(), 1);
    ASSERT_EQ(reminders.scheduled.size(), 1U);
    EXPECT_EQ(reminders.scheduled[0].generatedAt, 7);

    clock.advance(5s);
    spawn(state->refresh());
    answer(1, 8);
    EXPECT_EQ(state->lastGood()->generatedAt, 8);
    EXPECT_EQ(state->lastUpdated(), FakeClock::defaultStart + 7s);
}

TEST_F(AppStateTest, ASuccessIsPublishedWithItsTimeAndThenHandedOn) {
    start();
    const auto seen =
        watch([this] { return std::pair(state->lastUpdated(), reminders.scheduled.size()); });
    clock.advance(2s);
    answer(0, 7);
    ASSERT_EQ(seen->size(), 1U);
    EXPECT_EQ(seen->front().first, FakeClock::defaultStart + 2s);
    EXPECT_EQ(seen->front().second, 0U);
    EXPECT_EQ(reminders.scheduled.size(), 1U);
}

TEST_F(AppStateTest, LoadingAndFailuresArePublished) {
    EXPECT_TRUE(keychain.deleteToken());
    start();
    const auto seen = watchStates();
    spawn(state->refresh());
    EXPECT_TRUE(keychain.setToken(u"t0ken"_s));
    spawn(state->refresh());
    transport.complete(0, FakeHttpTransport::answer(404));
    EXPECT_EQ(*seen, (std::vector{notConfigured, u"loading"_s, u"Server error (404)"_s}));
}

TEST_F(AppStateTest, AFailureIsPublishedEvenWithNothingToSay) {
    start();
    const auto seen = watchStates();
    transport.complete(0, FakeHttpTransport::answer(400, R"({"error": ""})"));
    EXPECT_EQ(*seen, std::vector{u""_s});
    EXPECT_TRUE(state->state().isFailed());
}

TEST_F(AppStateTest, WithoutTokenNothingIsSent) {
    EXPECT_TRUE(keychain.deleteToken());
    start();
    EXPECT_EQ(failure(), notConfigured);
    EXPECT_EQ(requestCount(), 0U);
}

TEST_F(AppStateTest, ARefreshHasTheUserAskedForALockedToken) {
    secrets.setLookupTrouble(SecretLookup::Status::Locked);
    start();
    EXPECT_EQ(failure(), notConfigured);
    EXPECT_EQ(secrets.unlockRequests(), 1);
}

TEST_F(AppStateTest, AnEndpointOfSpacesIsNone) {
    preferences.set(u"endpointURL"_s, u" \t\n "_s);
    start();
    EXPECT_EQ(failure(), notConfigured);
    EXPECT_EQ(requestCount(), 0U);
}

TEST_F(AppStateTest, LosingTheConfigurationKeepsTheLastGoodBriefing) {
    startLoaded(1);
    EXPECT_TRUE(keychain.deleteToken());
    spawn(state->refresh());
    EXPECT_EQ(failure(), notConfigured);
    EXPECT_TRUE(state->lastGood());
    EXPECT_TRUE(state->lastUpdated());
}

TEST_F(AppStateTest, TheNextTickTriesAgainWhenConfigurationCameLater) {
    EXPECT_TRUE(keychain.deleteToken());
    start();
    EXPECT_TRUE(keychain.setToken(u"t0ken"_s));
    clock.advance(10min);
    EXPECT_EQ(requestCount(), 1U);
}

TEST_F(AppStateTest, OnlyTheFirstRefreshShowsLoading) {
    startLoaded(1);
    spawn(state->refresh());
    EXPECT_TRUE(state->state().isLoaded());
    transport.complete(1, FakeHttpTransport::answer(401));
    EXPECT_TRUE(state->state().isFailed());
    spawn(state->refresh());
    EXPECT_TRUE(state->state().isFailed());
}

TEST_F(AppStateTest, AFailedFirstFetchIsLoadingAgainAtTheNext) {
    start();
    transport.complete(0, FakeHttpTransport::answer(401));
    EXPECT_EQ(failure(), u"Token rejected (401)"_s);
    spawn(state->refresh());
    EXPECT_TRUE(state->state().isLoading());
}

TEST_F(AppStateTest, AFailureAfterASuccessKeepsWhatIsThere) {
    startLoaded(1);
    const auto updated = state->lastUpdated();
    clock.advance(5s);
    spawn(state->refresh());
    transport.complete(1, FakeHttpTransport::answer(404));
    EXPECT_EQ(failure(), u"Server error (404)"_s);
    EXPECT_EQ(state->lastUpdated(), updated);
    EXPECT_EQ(state->lastGood()->generatedAt, 1);
    EXPECT_EQ(reminders.scheduled.size(), 1U);
}

TEST_F(AppStateTest, OfOverlappingRefreshesTheLastToCompleteWins) {
    start();
    spawn(state->refresh());
    spawn(state->refresh());
    ASSERT_EQ(requestCount(), 3U);
    answer(2, 3);
    answer(0, 1);
    EXPECT_EQ(state->lastGood()->generatedAt, 1);
    transport.complete(1, FakeHttpTransport::answer(403));
    EXPECT_EQ(failure(), u"Server error (403)"_s);
    EXPECT_EQ(state->lastGood()->generatedAt, 1);
}

TEST_F(AppStateTest, RefreshesAtTheUsersInterval) {
    preferences.set(u"refreshMinutes"_s, u"5"_s);
    startLoaded(1);
    clock.advance(5min - 1us);
    EXPECT_EQ(requestCount(), 1U);
    clock.advance(1us);
    EXPECT_EQ(requestCount(), 2U);
    clock.advance(5min);
    EXPECT_EQ(requestCount(), 3U);
}

TEST_F(AppStateTest, AnIntervalIsTenMinutesByDefaultAndAtLeastOne) {
    EXPECT_EQ(pollingInterval(0), 60s);
    EXPECT_EQ(pollingInterval(-5), 60s);
    EXPECT_EQ(pollingInterval(10), 600s);
    EXPECT_EQ(pollingInterval(std::numeric_limits<qint64>::max()), 365 * 24h);
    start();
    EXPECT_EQ(state->refreshMinutes(), 10);
    EXPECT_EQ(clock.timerIntervals(), std::vector<std::chrono::seconds>{600s});
    preferences.set(u"refreshMinutes"_s, u"soon"_s);
    EXPECT_EQ(state->refreshMinutes(), 10);
}

TEST_F(AppStateTest, RestartingReplacesTheTimer) {
    start();
    clock.advance(4min);
    preferences.set(u"refreshMinutes"_s, u"30"_s);
    state->startPolling();
    settle();
    EXPECT_EQ(requestCount(), 2U);
    EXPECT_EQ(clock.timerIntervals(), std::vector<std::chrono::seconds>{1800s});
}

TEST_F(AppStateTest, WhoeverRestartsThePollingIsDoneBeforeItFetches) {
    start();
    const auto before = requestCount();
    state->startPolling();
    EXPECT_EQ(requestCount(), before);
    settle();
    EXPECT_EQ(requestCount(), before + 1);
}

TEST_F(AppStateTest, AfterWakeOneRefreshStartsAndTheIntervalBeginsAnew) {
    startLoaded(1);
    clock.advance(9min);
    Q_EMIT wake.woke();
    settle();
    EXPECT_EQ(requestCount(), 2U);
    clock.advance(9min);
    EXPECT_EQ(requestCount(), 2U);
    clock.advance(1min);
    EXPECT_EQ(requestCount(), 3U);
}

TEST_F(AppStateTest, EveryWakeCounts) {
    startLoaded(1);
    for (std::size_t wakes = 1; wakes <= 3; ++wakes) {
        Q_EMIT wake.woke();
        settle();
        EXPECT_EQ(requestCount(), 1 + wakes);
    }
}

TEST_F(AppStateTest, ATokenThatBecomesReadableRestartsThePolling) {
    secrets.setLookupTrouble(SecretLookup::Status::Locked);
    start();
    EXPECT_EQ(failure(), notConfigured);
    secrets.setLookupTrouble(std::nullopt);
    Q_EMIT secrets.readable();
    settle();
    EXPECT_EQ(requestCount(), 1U);
}

TEST_F(AppStateTest, TheEndpointIsReadAfreshOnEveryUse) {
    startLoaded(1);
    preferences.set(u"endpointURL"_s, u"https://other.example/api/briefing"_s);
    spawn(state->refresh());
    EXPECT_EQ(transport.requests()[1].url.host(), u"other.example"_s);
}

TEST_F(AppStateTest, MayEndWhileAFetchIsUnderWay) {
    start();
    state.reset();
    answer(0, 1);
    EXPECT_TRUE(reminders.scheduled.empty());
}

TEST_F(AppStateTest, ItsTimerEndsWithIt) {
    start();
    ASSERT_EQ(clock.timerIntervals().size(), 1U);
    state.reset();
    EXPECT_TRUE(clock.timerIntervals().empty());
    clock.advance(1h);
    EXPECT_EQ(requestCount(), 1U);
}

TEST_F(AppStateTest, TheDashboardIsTheEndpointsSite) {
    EXPECT_EQ(
        siteRoot(u"  https://me@day.example:8443/api/briefing?a=b#c \n"_s),
        QUrl(u"https://me@day.example:8443"_s));
    EXPECT_EQ(siteRoot({}), std::nullopt);
    EXPECT_EQ(siteRoot(u"day.example/api"_s), std::nullopt);
    EXPECT_EQ(siteRoot(u"//day.example/api"_s), std::nullopt);
    EXPECT_EQ(siteRoot(u"https:///api/briefing"_s), std::nullopt);
    start();
    EXPECT_EQ(state->dashboardURL(), QUrl(u"https://day.example"_s));
}

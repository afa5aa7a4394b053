#include "state/AppState.h"
#include "support/StateHarness.h"

#include <gtest/gtest.h>

using namespace lumora;
using namespace lumora::tests;
using namespace Qt::Literals::StringLiterals;
using namespace std::chrono_literals;

namespace {

/// A state that follows what other programs do to the preferences.
class AppStatePreferences : public testing::Test, protected StateHarness {
protected:
    std::size_t requestCount() const { return transport.requests().size(); }

    void SetUp() override {
        start();
        answer(0, 1);
    }

    /// Lets another program change a preference.
    void changeElsewhere(const QString& key, const QString& text) {
        preferences.set(key, text);
        tellOfChange();
    }

    void tellOfChange() {
        Q_EMIT preferences.changedElsewhere();
        settle();
    }
};

} // namespace

TEST_F(AppStatePreferences, RestartThePollingWhenTheyWereChangedElsewhere) {
    preferences.set(u"endpointURL"_s, u"https://other.example/api/briefing"_s);
    preferences.set(u"refreshMinutes"_s, u"30"_s);
    settle();
    EXPECT_EQ(requestCount(), 1U);
    tellOfChange();
    ASSERT_EQ(requestCount(), 2U);
    EXPECT_EQ(transport.requests()[1].url.host(), u"other.example"_s);
    EXPECT_EQ(clock.timerIntervals(), std::vector<std::chrono::seconds>{1800s});
}

TEST_F(AppStatePreferences, RestartNothingWhereFetchingDoesNotGoByThem) {
    clock.advance(9min);
    changeElsewhere(u"menuBarAmbient"_s, u"focus"_s);
    changeElsewhere(u"section.collapsed.events"_s, u"true"_s);
    EXPECT_EQ(requestCount(), 1U);
    clock.advance(1min);
    EXPECT_EQ(requestCount(), 2U);
}

TEST_F(AppStatePreferences, RestartThePollingWhereFetchingGoesByThem) {
    changeElsewhere(u"refreshMinutes"_s, u"30"_s);
    EXPECT_EQ(requestCount(), 2U);
    clock.advance(1min);
    changeElsewhere(u"notifyBeforeMeetings"_s, u"false"_s);
    EXPECT_EQ(requestCount(), 3U);
    clock.advance(1min);
    EXPECT_EQ(requestCount(), 3U);
}

TEST_F(AppStatePreferences, RestartNothingForHalfAnAddress) {
    EXPECT_TRUE(state->setEndpointURL(u"https://d"_s));
    tellOfChange(); // of something else
    EXPECT_EQ(requestCount(), 1U);
}

TEST_F(AppStatePreferences, RestartNothingForWhatAFetchWentBy) {
    preferences.set(u"notifyBeforeMeetings"_s, u"false"_s);
    preferences.set(u"endpointURL"_s, u"https://other.example/api/briefing"_s);
    spawn(state->refresh());
    ASSERT_EQ(requestCount(), 2U);
    tellOfChange();
    EXPECT_EQ(requestCount(), 2U);
    // The interval is another matter: it only counts from the next start.
    preferences.set(u"refreshMinutes"_s, u"30"_s);
    spawn(state->refresh());
    ASSERT_EQ(requestCount(), 3U);
    tellOfChange();
    EXPECT_EQ(requestCount(), 4U);
}

TEST_F(AppStatePreferences, AreFollowedAtAPaceWhereTheyChangeAllTheTime) {
    for (int i = 0; i < 100; ++i) {
        changeElsewhere(u"endpointURL"_s, u"https://day.example/%1"_s.arg(i));
        clock.advance(50ms);
    }
    settle();
    ASSERT_EQ(requestCount(), 3U); // at once, and five seconds later
    EXPECT_EQ(transport.requests()[1].url.path(), u"/0"_s);
    EXPECT_EQ(transport.requests()[2].url.path(), u"/99"_s);
    clock.advance(5s);
    settle();
    EXPECT_EQ(requestCount(), 3U);
    changeElsewhere(u"endpointURL"_s, u"https://day.example/at-once"_s);
    EXPECT_EQ(requestCount(), 4U);
}

#include "support/SettingsHarness.h"
#include "ui/settings/SettingsModel.h"

#include <gtest/gtest.h>

using namespace lumora;
using namespace lumora::tests;
using namespace Qt::Literals::StringLiterals;
using namespace std::chrono_literals;

namespace {

class SettingsModelConnectionTest : public testing::Test, protected SettingsHarness {};

} // namespace

TEST_F(SettingsModelConnectionTest, ASuccessfulTestCountsTheEventsAndRefreshes) {
    SettingsModel& settings = open();
    settings.setToken(u"new"_s);
    settings.testConnection();
    EXPECT_TRUE(settings.isTesting());
    EXPECT_EQ(settings.testResult(), std::nullopt);
    EXPECT_EQ(storedToken(), "new");
    ASSERT_EQ(newRequests(), 1U);
    EXPECT_EQ(sentToken(1), "new");

    transport.complete(1, FakeHttpTransport::answer(200, bodyWithEvents(3)));
    EXPECT_EQ(settings.testResult(), u"✓ 3 events today"_s);
    EXPECT_TRUE(settings.isTesting());
    ASSERT_EQ(newRequests(), 1U);
    transport.complete(2, FakeHttpTransport::answer(200, bodyWithEvents(3)));
    EXPECT_FALSE(settings.isTesting());
    EXPECT_EQ(state->lastGood()->eventsToday.size(), 3U);
}

TEST_F(SettingsModelConnectionTest, ADayWithoutEventsIsASuccessToo) {
    SettingsModel& settings = open();
    settings.testConnection();
    ASSERT_EQ(newRequests(), 1U);
    transport.complete(1, FakeHttpTransport::answer(200, bodyWithEvents(0)));
    EXPECT_EQ(settings.testResult(), u"✓ 0 events today"_s);
}

TEST_F(SettingsModelConnectionTest, AFailedTestSaysWhyAndRefreshesNothing) {
    SettingsModel& settings = open();
    const std::pair<HttpOutcome, QString> failures[] = {
        {FakeHttpTransport::answer(401), u"✗ Token rejected (401)"_s},
        {FakeHttpTransport::answer(404, "<html>"), u"✗ Server error (404)"_s},
        {FakeHttpTransport::answer(403, R"({"error":"Not today"})"), u"✗ Not today"_s},
        {FakeHttpTransport::answer(200, "<html>"), u"✗ Invalid response from server"_s},
    };
    for (const auto& [outcome, result] : failures) {
        settings.testConnection();
        EXPECT_EQ(settings.testResult(), std::nullopt);
        ASSERT_EQ(newRequests(), 1U);
        transport.complete(transport.requests().size() - 1, outcome);
        EXPECT_EQ(settings.testResult(), result);
        EXPECT_FALSE(settings.isTesting());
        EXPECT_EQ(newRequests(), 0U);
    }
}

TEST_F(SettingsModelConnectionTest, ABrokenNetworkIsReportedInItsOwnWords) {
    SettingsModel& settings = open();
    settings.testConnection();
    ASSERT_EQ(newRequests(), 1U);
    transport.complete(1, FakeHttpTransport::failure(u"Host not found"_s));
    transport.prepare(FakeHttpTransport::failure(u"Host not found"_s));
    transport.prepare(FakeHttpTransport::failure(u"Host not found"_s));
    EXPECT_TRUE(settings.isTesting());
    clock.advance(2s);
    EXPECT_EQ(settings.testResult(), u"✗ Host not found"_s);
}

TEST_F(SettingsModelConnectionTest, TestsWhatIsStoredWhenTheFieldIsEmpty) {
    SettingsModel& settings = open();
    settings.setToken({});
    const QStringList before = secrets.calls();
    settings.testConnection();
    EXPECT_EQ(secrets.calls(), before);
    ASSERT_EQ(newRequests(), 1U);
    EXPECT_EQ(sentToken(1), "t0ken");
}

TEST_F(SettingsModelConnectionTest, WithoutTokenOrEndpointTheTestFailsUnsent) {
    EXPECT_TRUE(keychain.deleteToken());
    SettingsModel& settings = open();
    settings.testConnection();
    settle();
    EXPECT_EQ(settings.testResult(), u"✗ Endpoint URL or token not set"_s);

    settings.setToken(u"t"_s);
    settings.setEndpointURL(u"  "_s);
    settings.testConnection();
    settle();
    EXPECT_EQ(settings.testResult(), u"✗ Invalid endpoint URL"_s);
    EXPECT_EQ(newRequests(), 0U);
}

TEST_F(SettingsModelConnectionTest, OneTestAtATime) {
    SettingsModel& settings = open();
    settings.testConnection();
    settings.testConnection();
    EXPECT_EQ(newRequests(), 1U);
}

TEST_F(SettingsModelConnectionTest, SavingDuringATestIsFine) {
    SettingsModel& settings = open();
    settings.testConnection();
    ASSERT_EQ(newRequests(), 1U);
    settings.saveToken();
    EXPECT_EQ(settings.testResult(), u"✓ Saved"_s);
    ASSERT_EQ(newRequests(), 1U);
    transport.complete(1, FakeHttpTransport::answer(401));
    EXPECT_EQ(settings.testResult(), u"✗ Token rejected (401)"_s);
}

TEST_F(SettingsModelConnectionTest, ATestOutlivesTheWindowAndItsResultIsKept) {
    SettingsModel& settings = open();
    settings.testConnection();
    ASSERT_EQ(newRequests(), 1U);
    settings.disappear();
    transport.complete(1, FakeHttpTransport::answer(401));
    settings.appear();
    EXPECT_EQ(settings.testResult(), u"✗ Token rejected (401)"_s);
    EXPECT_FALSE(settings.isTesting());
}

TEST_F(SettingsModelConnectionTest, MayEndDuringATest) {
    open().testConnection();
    ASSERT_EQ(newRequests(), 1U);
    model.reset();
    transport.complete(1, FakeHttpTransport::answer(200, bodyWithEvents(1)));
    EXPECT_EQ(newRequests(), 0U);
}

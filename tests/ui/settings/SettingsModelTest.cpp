#include "ui/settings/SettingsModel.h"

#include "support/SettingsHarness.h"

#include <QSignalSpy>

#include <gtest/gtest.h>

using namespace lumora;
using namespace lumora::tests;
using namespace Qt::Literals::StringLiterals;
using namespace std::chrono_literals;

namespace {

class SettingsModelTest : public testing::Test, protected SettingsHarness {
protected:
    QByteArray storedToken() const {
        const auto item = secrets.item({u"com.lumora.app"_s, u"briefingToken"_s});
        return item ? item->secret : QByteArray();
    }

    QByteArray sentToken(std::size_t request) const {
        for (const auto& [name, value] : transport.requests().at(request).headers) {
            if (name == "X-Api-Key")
                return value;
        }
        return {};
    }
};

} // namespace

// Token

TEST_F(SettingsModelTest, LoadsTheTokenEachTimeItAppears) {
    SettingsModel& settings = open();
    EXPECT_EQ(settings.token(), u"t0ken"_s);
    settings.disappear();
    EXPECT_EQ(settings.token(), QString());
    EXPECT_TRUE(keychain.setToken(u"another"_s));
    settings.appear();
    EXPECT_EQ(settings.token(), u"another"_s);
    settings.disappear();
    EXPECT_TRUE(keychain.deleteToken());
    settings.appear();
    EXPECT_EQ(settings.token(), QString());
}

TEST_F(SettingsModelTest, HaveTheUserAskedForALockedToken) {
    secrets.setLookupTrouble(SecretLookup::Status::Locked);
    const int before = secrets.unlockRequests();
    open();
    EXPECT_GT(secrets.unlockRequests(), before);
}

TEST_F(SettingsModelTest, SavingStoresTheTokenAndRefreshes) {
    SettingsModel& settings = open();
    settings.setToken(u" new token \n"_s);
    EXPECT_EQ(storedToken(), "t0ken");
    settings.saveToken();
    EXPECT_EQ(settings.testResult(), u"✓ Saved"_s);
    EXPECT_EQ(settings.token(), u" new token \n"_s);
    EXPECT_EQ(storedToken(), "new token");
    ASSERT_EQ(newRequests(), 1U);
    EXPECT_EQ(sentToken(1), "new token");
}

TEST_F(SettingsModelTest, OnlyAnEmptyTokenCannotBeSaved) {
    SettingsModel& settings = open();
    settings.setToken({});
    EXPECT_FALSE(settings.canSaveToken());
    settings.setToken(u"  "_s);
    EXPECT_TRUE(settings.canSaveToken());
    settings.saveToken();
    EXPECT_EQ(storedToken(), QByteArray());
    EXPECT_EQ(settings.testResult(), u"✓ Saved"_s);
}

TEST_F(SettingsModelTest, ReturnSavesAnEmptyTokenToo) {
    SettingsModel& settings = open();
    settings.setToken({});
    settings.saveToken();
    EXPECT_EQ(storedToken(), QByteArray());
    settle();
    EXPECT_EQ(state->state().failureMessage(), u"Not configured — open Settings"_s);
}

TEST_F(SettingsModelTest, SaysSavedEvenIfTheStoreRefuses) {
    secrets.setAddFails(true);
    SettingsModel& settings = open();
    settings.setToken(u"new"_s);
    settings.saveToken();
    EXPECT_EQ(settings.testResult(), u"✓ Saved"_s);
}

TEST_F(SettingsModelTest, StoresALateTokenOnceTheKeyringIsUnlocked) {
    SettingsModel& settings = open();
    secrets.setAddFails(true);
    secrets.setRemoveFails(true);
    settings.setToken(u"new"_s);
    settings.saveToken();
    settings.disappear();
    Q_EMIT secrets.readable();
    EXPECT_EQ(storedToken(), "t0ken");

    secrets.setAddFails(false);
    secrets.setRemoveFails(false);
    Q_EMIT secrets.readable();
    EXPECT_EQ(storedToken(), "new");
    EXPECT_TRUE(keychain.setToken(u"from elsewhere"_s));
    Q_EMIT secrets.readable();
    EXPECT_EQ(storedToken(), "from elsewhere");
}

TEST_F(SettingsModelTest, ShowsTheTokenOnceTheKeyringIsUnlocked) {
    secrets.setLookupTrouble(SecretLookup::Status::Locked);
    SettingsModel& settings = open();
    const QSignalSpy changed(&settings, &SettingsModel::changed);
    EXPECT_EQ(settings.token(), QString());
    secrets.setLookupTrouble(std::nullopt);
    Q_EMIT secrets.readable();
    EXPECT_EQ(settings.token(), u"t0ken"_s);
    EXPECT_EQ(changed.count(), 1);
}

TEST_F(SettingsModelTest, AnUnlockedKeyringDoesNotReplaceWhatIsBeingTyped) {
    secrets.setLookupTrouble(SecretLookup::Status::Locked);
    SettingsModel& settings = open();
    settings.setToken(u"n"_s);
    settings.setToken({});
    secrets.setLookupTrouble(std::nullopt);
    Q_EMIT secrets.readable();
    EXPECT_EQ(settings.token(), QString());
}

TEST_F(SettingsModelTest, AClosedWindowAsksForNoToken) {
    SettingsModel& settings = open();
    settings.disappear();
    const QSignalSpy changed(&settings, &SettingsModel::changed);
    Q_EMIT secrets.readable();
    preferences.set(u"menuBarAmbient"_s, u"focus"_s);
    EXPECT_EQ(settings.token(), QString());
    EXPECT_EQ(changed.count(), 0);
}

// Testing the connection

TEST_F(SettingsModelTest, ASuccessfulTestCountsTheEventsAndRefreshes) {
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

TEST_F(SettingsModelTest, ADayWithoutEventsIsASuccessToo) {
    SettingsModel& settings = open();
    settings.testConnection();
    ASSERT_EQ(newRequests(), 1U);
    transport.complete(1, FakeHttpTransport::answer(200, bodyWithEvents(0)));
    EXPECT_EQ(settings.testResult(), u"✓ 0 events today"_s);
}

TEST_F(SettingsModelTest, AFailedTestSaysWhyAndRefreshesNothing) {
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

TEST_F(SettingsModelTest, ABrokenNetworkIsReportedInItsOwnWords) {
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

TEST_F(SettingsModelTest, TestsWhatIsStoredWhenTheFieldIsEmpty) {
    SettingsModel& settings = open();
    settings.setToken({});
    const QStringList before = secrets.calls();
    settings.testConnection();
    EXPECT_EQ(secrets.calls(), before);
    ASSERT_EQ(newRequests(), 1U);
    EXPECT_EQ(sentToken(1), "t0ken");
}

TEST_F(SettingsModelTest, WithoutTokenOrEndpointTheTestFailsUnsent) {
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

TEST_F(SettingsModelTest, OneTestAtATime) {
    SettingsModel& settings = open();
    settings.testConnection();
    settings.testConnection();
    EXPECT_EQ(newRequests(), 1U);
}

TEST_F(SettingsModelTest, SavingDuringATestIsFine) {
    SettingsModel& settings = open();
    settings.testConnection();
    ASSERT_EQ(newRequests(), 1U);
    settings.saveToken();
    EXPECT_EQ(settings.testResult(), u"✓ Saved"_s);
    ASSERT_EQ(newRequests(), 1U);
    transport.complete(1, FakeHttpTransport::answer(401));
    EXPECT_EQ(settings.testResult(), u"✗ Token rejected (401)"_s);
}

TEST_F(SettingsModelTest, ATestOutlivesTheWindowAndItsResultIsKept) {
    SettingsModel& settings = open();
    settings.testConnection();
    ASSERT_EQ(newRequests(), 1U);
    settings.disappear();
    transport.complete(1, FakeHttpTransport::answer(401));
    settings.appear();
    EXPECT_EQ(settings.testResult(), u"✗ Token rejected (401)"_s);
    EXPECT_FALSE(settings.isTesting());
}

TEST_F(SettingsModelTest, MayEndDuringATest) {
    open().testConnection();
    ASSERT_EQ(newRequests(), 1U);
    model.reset();
    transport.complete(1, FakeHttpTransport::answer(200, bodyWithEvents(1)));
    EXPECT_EQ(newRequests(), 0U);
}

// Preferences

TEST_F(SettingsModelTest, TheEndpointIsStoredAtOnceAndFetchedLater) {
    SettingsModel& settings = open();
    settings.setEndpointURL(u"https://b"_s);
    EXPECT_EQ(preferences.value(u"endpointURL"_s), u"https://b"_s);
    EXPECT_EQ(newRequests(), 0U);
}

TEST_F(SettingsModelTest, ANewIntervalCountsFromNow) {
    SettingsModel& settings = open();
    settings.setRefreshMinutes(5);
    EXPECT_EQ(preferences.value(u"refreshMinutes"_s), u"5"_s);
    EXPECT_EQ(clock.timerIntervals(), std::vector<std::chrono::seconds>{300s});
    EXPECT_EQ(newRequests(), 1U);
    settings.setRefreshMinutes(5);
    EXPECT_EQ(newRequests(), 0U);
}

TEST_F(SettingsModelTest, TheDefaultIntervalIsNoChange) {
    SettingsModel& settings = open();
    EXPECT_EQ(settings.refreshMinutes(), 10);
    settings.setRefreshMinutes(10);
    EXPECT_EQ(preferences.value(u"refreshMinutes"_s), std::nullopt);
    EXPECT_EQ(newRequests(), 0U);
}

TEST_F(SettingsModelTest, NotificationsAskForPermissionThenRefreshEitherWay) {
    SettingsModel& settings = open();
    EXPECT_TRUE(settings.notifyBeforeMeetings());
    for (const auto& [on, text] : {std::pair(false, u"false"_s), {true, u"true"_s}}) {
        const int asked = reminders.authorizationRequests;
        settings.setNotifyBeforeMeetings(on);
        EXPECT_EQ(preferences.value(u"notifyBeforeMeetings"_s), text);
        EXPECT_EQ(reminders.authorizationRequests, asked + 1);
        EXPECT_EQ(newRequests(), 1U);
    }
    settings.setNotifyBeforeMeetings(true);
    EXPECT_EQ(newRequests(), 0U);
}

TEST_F(SettingsModelTest, TheAmbientFigureIsStoredByItsRawValue) {
    SettingsModel& settings = open();
    EXPECT_EQ(settings.menuBarAmbient(), MenuBarAmbient::Habits);
    settings.setMenuBarAmbient(MenuBarAmbient::None);
    EXPECT_EQ(preferences.value(u"menuBarAmbient"_s), u"none"_s);
    EXPECT_EQ(settings.menuBarAmbient(), MenuBarAmbient::None);
    EXPECT_EQ(newRequests(), 0U);
}

TEST_F(SettingsModelTest, ChangesFromElsewhereAreAnnounced) {
    SettingsModel& settings = open();
    const QSignalSpy changed(&settings, &SettingsModel::changed);
    preferences.set(u"refreshMinutes"_s, u"7"_s);
    EXPECT_EQ(changed.count(), 1);
    EXPECT_EQ(settings.refreshMinutes(), 7);
}

// Launch at login

TEST_F(SettingsModelTest, TheSwitchFollowsTheRegistryEachTimeItAppears) {
    loginItems.current = LoginItemStatus::Enabled;
    SettingsModel& settings = open();
    EXPECT_TRUE(settings.launchAtLogin());
    for (const auto status :
         {LoginItemStatus::RequiresApproval, LoginItemStatus::NotFound,
          LoginItemStatus::NotRegistered}) {
        loginItems.current = status;
        settings.disappear();
        settings.appear();
        EXPECT_FALSE(settings.launchAtLogin());
        EXPECT_EQ(loginItems.current, status);
    }
    EXPECT_EQ(loginItems.calls, QStringList());
}

TEST_F(SettingsModelTest, MovingTheSwitchRegistersAndUnregisters) {
    SettingsModel& settings = open();
    settings.setLaunchAtLogin(true);
    EXPECT_EQ(loginItems.current, LoginItemStatus::Enabled);
    settings.setLaunchAtLogin(false);
    EXPECT_EQ(loginItems.current, LoginItemStatus::NotRegistered);
    EXPECT_EQ(settings.loginItemMessage(), std::nullopt);
}

TEST_F(SettingsModelTest, ASwitchedOffItemReadsOffWithAHint) {
    loginItems.current = LoginItemStatus::RequiresApproval;
    SettingsModel& settings = open();
    EXPECT_FALSE(settings.launchAtLogin());
    EXPECT_EQ(
        settings.loginItemMessage(), u"Turned off in System Settings › General › Login Items"_s);
}

TEST_F(SettingsModelTest, AnItemWhoseProgramIsGoneReadsOffWithAHint) {
    loginItems.current = LoginItemStatus::NotFound;
    SettingsModel& settings = open();
    EXPECT_FALSE(settings.launchAtLogin());
    EXPECT_EQ(settings.loginItemMessage(), u"Move Lumora to /Applications for this to stick"_s);
}

// The switch going back is a move like any other, with all that follows from it.

TEST_F(SettingsModelTest, AFailedRegistrationOfNothingSwitchesBackAndIsForgotten) {
    loginItems.registerError = u"no room"_s;
    SettingsModel& settings = open();
    settings.setLaunchAtLogin(true);
    EXPECT_FALSE(settings.launchAtLogin());
    EXPECT_EQ(loginItems.calls, QStringList(u"register"_s));
    EXPECT_EQ(settings.loginItemMessage(), std::nullopt);
}

TEST_F(SettingsModelTest, AFailedRegistrationRemovesWhatIsSwitchedOff) {
    loginItems.current = LoginItemStatus::RequiresApproval;
    loginItems.registerError = u"no room"_s;
    SettingsModel& settings = open();
    settings.setLaunchAtLogin(true);
    EXPECT_FALSE(settings.launchAtLogin());
    EXPECT_EQ(loginItems.calls, (QStringList{u"register"_s, u"unregister"_s}));
    EXPECT_EQ(loginItems.current, LoginItemStatus::NotRegistered);
    EXPECT_EQ(settings.loginItemMessage(), std::nullopt);
}

TEST_F(SettingsModelTest, AnErrorThatStaysIsShownInsteadOfTheHint) {
    loginItems.current = LoginItemStatus::NotFound;
    loginItems.registerError = u"no room"_s;
    loginItems.unregisterError = u"no right"_s;
    SettingsModel& settings = open();
    settings.setLaunchAtLogin(true);
    EXPECT_FALSE(settings.launchAtLogin());
    EXPECT_EQ(loginItems.calls, (QStringList{u"register"_s, u"unregister"_s}));
    EXPECT_EQ(settings.loginItemMessage(), u"no right"_s);
    settings.disappear();
    settings.appear();
    EXPECT_EQ(settings.loginItemMessage(), u"no right"_s);

    loginItems.registerError.reset();
    settings.setLaunchAtLogin(true);
    EXPECT_TRUE(settings.launchAtLogin());
    EXPECT_EQ(settings.loginItemMessage(), std::nullopt);
}

TEST_F(SettingsModelTest, AFailedRemovalSwitchesBackOn) {
    loginItems.current = LoginItemStatus::Enabled;
    loginItems.unregisterError = u"no right"_s;
    SettingsModel& settings = open();
    settings.setLaunchAtLogin(false);
    EXPECT_TRUE(settings.launchAtLogin());
    EXPECT_EQ(loginItems.calls, QStringList(u"unregister"_s));
    EXPECT_EQ(settings.loginItemMessage(), std::nullopt);
}

TEST_F(SettingsModelTest, LookingAgainSeesWhatTheDesktopDid) {
    loginItems.current = LoginItemStatus::Enabled;
    SettingsModel& settings = open();
    const QSignalSpy changed(&settings, &SettingsModel::changed);
    loginItems.current = LoginItemStatus::RequiresApproval;
    settings.lookAgain();
    EXPECT_FALSE(settings.launchAtLogin());
    EXPECT_EQ(changed.count(), 1);
    EXPECT_EQ(loginItems.calls, QStringList());
}

#include "ui/settings/SettingsModel.h"

#include "support/SettingsHarness.h"

#include <QSignalSpy>

#include <gtest/gtest.h>

using namespace lumora;
using namespace lumora::tests;
using namespace Qt::Literals::StringLiterals;
using namespace std::chrono_literals;

namespace {

class SettingsModelTest : public testing::Test, protected SettingsHarness {};

} // namespace

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

#include "support/SettingsHarness.h"
#include "ui/settings/SettingsModel.h"

#include <QSignalSpy>

#include <gtest/gtest.h>

using namespace lumora;
using namespace lumora::tests;
using namespace Qt::Literals::StringLiterals;
using namespace std::chrono_literals;

namespace {

class SettingsModelLoginItemTest : public testing::Test, protected SettingsHarness {};

} // namespace

TEST_F(SettingsModelLoginItemTest, TheSwitchFollowsTheRegistryEachTimeItAppears) {
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

TEST_F(SettingsModelLoginItemTest, MovingTheSwitchRegistersAndUnregisters) {
    SettingsModel& settings = open();
    settings.setLaunchAtLogin(true);
    EXPECT_EQ(loginItems.current, LoginItemStatus::Enabled);
    settings.setLaunchAtLogin(false);
    EXPECT_EQ(loginItems.current, LoginItemStatus::NotRegistered);
    EXPECT_EQ(settings.loginItemMessage(), std::nullopt);
}

TEST_F(SettingsModelLoginItemTest, ASwitchedOffItemReadsOffWithAHint) {
    loginItems.current = LoginItemStatus::RequiresApproval;
    SettingsModel& settings = open();
    EXPECT_FALSE(settings.launchAtLogin());
    EXPECT_EQ(
        settings.loginItemMessage(), u"Turned off in System Settings › General › Login Items"_s);
}

TEST_F(SettingsModelLoginItemTest, AnItemWhoseProgramIsGoneReadsOffWithAHint) {
    loginItems.current = LoginItemStatus::NotFound;
    SettingsModel& settings = open();
    EXPECT_FALSE(settings.launchAtLogin());
    EXPECT_EQ(settings.loginItemMessage(), u"Move Lumora to /Applications for this to stick"_s);
}

TEST_F(SettingsModelLoginItemTest, AFailedRegistrationOfNothingSwitchesBackAndIsForgotten) {
    loginItems.registerError = u"no room"_s;
    SettingsModel& settings = open();
    settings.setLaunchAtLogin(true);
    EXPECT_FALSE(settings.launchAtLogin());
    EXPECT_EQ(loginItems.calls, QStringList(u"register"_s));
    EXPECT_EQ(settings.loginItemMessage(), std::nullopt);
}

TEST_F(SettingsModelLoginItemTest, AFailedRegistrationRemovesWhatIsSwitchedOff) {
    loginItems.current = LoginItemStatus::RequiresApproval;
    loginItems.registerError = u"no room"_s;
    SettingsModel& settings = open();
    settings.setLaunchAtLogin(true);
    EXPECT_FALSE(settings.launchAtLogin());
    EXPECT_EQ(loginItems.calls, (QStringList{u"register"_s, u"unregister"_s}));
    EXPECT_EQ(loginItems.current, LoginItemStatus::NotRegistered);
    EXPECT_EQ(settings.loginItemMessage(), std::nullopt);
}

TEST_F(SettingsModelLoginItemTest, AnErrorThatStaysIsShownInsteadOfTheHint) {
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

TEST_F(SettingsModelLoginItemTest, AFailedRemovalSwitchesBackOn) {
    loginItems.current = LoginItemStatus::Enabled;
    loginItems.unregisterError = u"no right"_s;
    SettingsModel& settings = open();
    settings.setLaunchAtLogin(false);
    EXPECT_TRUE(settings.launchAtLogin());
    EXPECT_EQ(loginItems.calls, QStringList(u"unregister"_s));
    EXPECT_EQ(settings.loginItemMessage(), std::nullopt);
}

TEST_F(SettingsModelLoginItemTest, LookingAgainSeesWhatTheDesktopDid) {
    loginItems.current = LoginItemStatus::Enabled;
    SettingsModel& settings = open();
    const QSignalSpy changed(&settings, &SettingsModel::changed);
    loginItems.current = LoginItemStatus::RequiresApproval;
    settings.lookAgain();
    EXPECT_FALSE(settings.launchAtLogin());
    EXPECT_EQ(changed.count(), 1);
    EXPECT_EQ(loginItems.calls, QStringList());
}

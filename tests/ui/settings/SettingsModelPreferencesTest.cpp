#include "support/SettingsHarness.h"
#include "ui/settings/SettingsModel.h"

#include <QSignalSpy>

#include <gtest/gtest.h>

using namespace lumora;
using namespace lumora::tests;
using namespace Qt::Literals::StringLiterals;
using namespace std::chrono_literals;

namespace {

class SettingsModelPreferencesTest : public testing::Test, protected SettingsHarness {};

} // namespace

TEST_F(SettingsModelPreferencesTest, TheEndpointIsStoredAtOnceAndFetchedLater) {
    SettingsModel& settings = open();
    settings.setEndpointURL(u"https://b"_s);
    EXPECT_EQ(preferences.value(u"endpointURL"_s), u"https://b"_s);
    EXPECT_EQ(newRequests(), 0U);
}

TEST_F(SettingsModelPreferencesTest, ANewIntervalCountsFromNow) {
    SettingsModel& settings = open();
    settings.setRefreshMinutes(5);
    EXPECT_EQ(preferences.value(u"refreshMinutes"_s), u"5"_s);
    EXPECT_EQ(clock.timerIntervals(), std::vector<std::chrono::seconds>{300s});
    EXPECT_EQ(newRequests(), 1U);
    settings.setRefreshMinutes(5);
    EXPECT_EQ(newRequests(), 0U);
}

TEST_F(SettingsModelPreferencesTest, TheDefaultIntervalIsNoChange) {
    SettingsModel& settings = open();
    EXPECT_EQ(settings.refreshMinutes(), 10);
    settings.setRefreshMinutes(10);
    EXPECT_EQ(preferences.value(u"refreshMinutes"_s), std::nullopt);
    EXPECT_EQ(newRequests(), 0U);
}

TEST_F(SettingsModelPreferencesTest, NotificationsAskForPermissionThenRefreshEitherWay) {
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

TEST_F(SettingsModelPreferencesTest, TheAmbientFigureIsStoredByItsRawValue) {
    SettingsModel& settings = open();
    EXPECT_EQ(settings.menuBarAmbient(), MenuBarAmbient::Habits);
    settings.setMenuBarAmbient(MenuBarAmbient::None);
    EXPECT_EQ(preferences.value(u"menuBarAmbient"_s), u"none"_s);
    EXPECT_EQ(settings.menuBarAmbient(), MenuBarAmbient::None);
    EXPECT_EQ(newRequests(), 0U);
}

TEST_F(SettingsModelPreferencesTest, ChangesFromElsewhereAreAnnounced) {
    SettingsModel& settings = open();
    const QSignalSpy changed(&settings, &SettingsModel::changed);
    preferences.set(u"refreshMinutes"_s, u"7"_s);
    EXPECT_EQ(changed.count(), 1);
    EXPECT_EQ(settings.refreshMinutes(), 7);
}

#include "app/AppDelegate.h"

#include "fakes/RecordingReminders.h"
#include "fakes/RecordingUrlOpener.h"
#include "platform/memory/MemoryPreferences.h"

#include <gtest/gtest.h>

using namespace lumora;
using namespace lumora::tests;
using namespace Qt::Literals::StringLiterals;

namespace {

class AppDelegateTest : public testing::Test {
protected:
    void click(const QVariantMap& userInfo) { delegate.didReceive(userInfo, "token"); }

    RecordingReminders reminders;
    RecordingUrlOpener urls;
    MemoryPreferences preferences;
    AppDelegate delegate{reminders, preferences, urls};
};

} // namespace

TEST_F(AppDelegateTest, AsksForPermissionAtLaunch) {
    delegate.applicationDidFinishLaunching();
    EXPECT_EQ(reminders.authorizationRequests, 1);
}

TEST_F(AppDelegateTest, AClickedReminderOpensItsMeeting) {
    click({{u"meetingUrl"_s, u"https://meet.example/a"_s}});
    EXPECT_EQ(urls.opened, QList{QUrl(u"https://meet.example/a"_s)});
    EXPECT_EQ(urls.tokens, QList<QByteArray>{"token"});
}

TEST_F(AppDelegateTest, WithoutAnAddressNothingHappens) {
    click({});
    click({{u"other"_s, u"https://meet.example/a"_s}});
    EXPECT_TRUE(urls.opened.isEmpty());
}

TEST_F(AppDelegateTest, AnAddressThatDoesNotParseIsIgnored) {
    click({{u"meetingUrl"_s, u"http://[nowhere"_s}});
    click({{u"meetingUrl"_s, QString()}});
    click({{u"meetingUrl"_s, 7}});
    EXPECT_TRUE(urls.opened.isEmpty());
}

TEST_F(AppDelegateTest, AnAddressThatReadsFilesOrRunsCodeIsIgnored) {
    for (const auto& address :
         {u"file:///etc/passwd"_s, u"FILE:///etc/passwd"_s, u"javascript:alert(1)"_s,
          u"data:text/html,x"_s, u"meet.example/a"_s})
        click({{u"meetingUrl"_s, address}});
    EXPECT_TRUE(urls.opened.isEmpty());
}

TEST_F(AppDelegateTest, AMeetingClientsOwnSchemeIsOpened) {
    click({{u"meetingUrl"_s, u"zoommtg://join?confno=1"_s}});
    EXPECT_EQ(urls.opened.size(), 1);
}

TEST_F(AppDelegateTest, SoIsAnyOtherThatTheUserAllowsByNow) {
    click({{u"meetingUrl"_s, u"slack://open"_s}});
    EXPECT_TRUE(urls.opened.isEmpty());
    EXPECT_TRUE(preferences.setValue(u"linkSchemes"_s, u"slack"_s));
    click({{u"meetingUrl"_s, u"slack://open"_s}});
    EXPECT_EQ(urls.opened, QList{QUrl(u"slack://open"_s)});
}

#include "app/StatusAreaNotice.h"

#include "fakes/FakeClock.h"
#include "fakes/FakeNotificationCenter.h"
#include "fakes/FakePreferences.h"
#include "fakes/FakeStatusItem.h"

#include <gtest/gtest.h>

using namespace lumora;
using namespace lumora::tests;
using namespace Qt::Literals::StringLiterals;

namespace {

class StatusAreaNoticeTest : public testing::Test {
protected:
    FakeStatusItem item;
    FakeNotificationCenter notifications;
    FakePreferences preferences;
    FakeClock clock;
    StatusAreaNotice notice{{item, notifications, preferences, clock, u"GNOME"_s}};
};

} // namespace

TEST_F(StatusAreaNoticeTest, SaysNothingWhileTheItemIsShown) {
    notice.tell();
    EXPECT_TRUE(notifications.pending.empty());
}

TEST_F(StatusAreaNoticeTest, SaysWhatIsMissingOnThisDesktop) {
    item.reason = u"No status area"_s;
    notice.tell();
    ASSERT_EQ(notifications.pending.size(), 1U);
    EXPECT_TRUE(notifications.pending[0].body.contains(u"GNOME"));
    EXPECT_EQ(notifications.pending[0].fireTime, clock.now());
    EXPECT_TRUE(notifications.pending[0].userInfo.isEmpty());
}

TEST_F(StatusAreaNoticeTest, SaysItOnceForGood) {
    item.reason = u"No status area"_s;
    notice.tell();
    notifications.pending.clear();
    notice.tell();
    StatusAreaNotice({item, notifications, preferences, clock, {}}).tell(); // the next start
    EXPECT_TRUE(notifications.pending.empty());
}

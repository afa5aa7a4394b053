// Ending completes whatever is under way, and none of it may find the program half gone.

#include "app/LumobarAppFixture.h"
#include "support/Patience.h"

#include <QDBusPendingCallWatcher>
#include <QTest>

using namespace lumora;
using namespace lumora::tests;
using namespace Qt::Literals::StringLiterals;

namespace {

class LumobarAppEndingTest : public LumobarAppFixture {};

} // namespace

TEST_F(LumobarAppEndingTest, MayEndBeforeItBegan) {
    program->start();
    end();
}

TEST_F(LumobarAppEndingTest, MayEndWhileItStillWaitsForAStatusArea) {
    begin();
    EXPECT_EQ(clock->pendingWaitCount(), 2U);
    end();
}

TEST_F(LumobarAppEndingTest, MayEndWhileItAsksForPermission) {
    notifications->hold();
    begin();
    EXPECT_EQ(notifications->heldCount(), 1U);
    end();
}

TEST_F(LumobarAppEndingTest, MayEndWhileSomebodyWaitsForARefresh) {
    begin();
    const auto refresh = command(u"Refresh"_s);
    ASSERT_TRUE(QTest::qWaitFor([this] { return transport->requests().size() == 2; }, patience));
    end();
    EXPECT_FALSE(refresh.isFinished());
}

TEST_F(LumobarAppEndingTest, MayEndWhileALargeAnswerIsRead) {
    begin();
    const QByteArray blanks(1 << 20, ' ');
    transport->complete(0, FakeHttpTransport::answer(200, briefingBody(1) + blanks));
    end();
}

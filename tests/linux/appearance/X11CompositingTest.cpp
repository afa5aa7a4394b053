#include "linux/appearance/X11Compositing.h"

#include "linux/appearance/X11Client.h"
#include "support/Patience.h"

#include <QSignalSpy>
#include <QTest>

namespace lumora::tests {
namespace {

using X11CompositingTest = X11ClientTest;

SelectionOwner startCompositor(const QByteArray& display) {
    return {display, "_NET_WM_CM_S0"};
}

TEST_F(X11CompositingTest, IsOffWithoutAManager) {
    EXPECT_FALSE(X11Compositing(connection.get()).isActive());
}

TEST_F(X11CompositingTest, IsOnWithAManager) {
    const auto manager = startCompositor(display.name());
    EXPECT_TRUE(X11Compositing(connection.get()).isActive());
}

TEST_F(X11CompositingTest, FollowsAManagerThatStartsAndEnds) {
    X11Compositing compositing(connection.get());
    const QSignalSpy changed(&compositing, &Compositing::changed);
    {
        const auto manager = startCompositor(display.name());
        deliverEvents();
        EXPECT_TRUE(compositing.isActive());
        EXPECT_EQ(changed.count(), 1);
    }
    // The server notices the end of a connection in its own time.
    EXPECT_TRUE(QTest::qWaitFor(
        [&] {
            deliverEvents();
            return !compositing.isActive();
        },
        patience));
    EXPECT_EQ(changed.count(), 2);
}

TEST_F(X11CompositingTest, IsNotConcernedWithOtherSelections) {
    X11Compositing compositing(connection.get());
    const SelectionOwner other(display.name(), "_NET_WM_CM_S1");
    EXPECT_FALSE(X11Compositing(connection.get()).isActive());
    deliverEvents();
    EXPECT_FALSE(compositing.isActive());
}

TEST_F(X11CompositingTest, LooksAtTheScreenThatTheDisplayNames) {
    const ScopedEnvironment second("DISPLAY", display.name() + ".1");
    const SelectionOwner manager(display.name(), "_NET_WM_CM_S1");
    EXPECT_TRUE(X11Compositing(connection.get()).isActive());
}

} // namespace
} // namespace lumora::tests

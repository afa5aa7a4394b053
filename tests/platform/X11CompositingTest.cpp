#include "platform/linux/X11Compositing.h"

#include "support/PrivateDisplay.h"
#include "support/ScopedEnvironment.h"

#include <QSignalSpy>
#include <QTest>

#include <gtest/gtest.h>
#include <xcb/xcb.h>
#include <xcb/xfixes.h>

#include <cstdlib>
#include <cstring>
#include <memory>

namespace lumora::tests {
namespace {

struct Free {
    void operator()(void* memory) const { std::free(memory); }
};

struct Disconnect {
    void operator()(xcb_connection_t* connection) const { xcb_disconnect(connection); }
};

using Connection = std::unique_ptr<xcb_connection_t, Disconnect>;

xcb_atom_t atom(xcb_connection_t* connection, const char* name) {
    const auto cookie = xcb_intern_atom(connection, false, std::uint16_t(std::strlen(name)), name);
    const std::unique_ptr<xcb_intern_atom_reply_t, Free> reply(
        xcb_intern_atom_reply(connection, cookie, nullptr));
    return reply->atom;
}

/// A compositing manager, as far as others see it; it ends when it is destroyed.
class CompositingManager {
public:
    explicit CompositingManager(const QByteArray& display, const char* selection = "_NET_WM_CM_S0")
        : m_connection(xcb_connect(display.constData(), nullptr)) {
        auto* connection = m_connection.get();
        const auto* screen = xcb_setup_roots_iterator(xcb_get_setup(connection)).data;
        const auto window = xcb_generate_id(connection);
        xcb_create_window(
            connection, 0, window, screen->root, 0, 0, 1, 1, 0, XCB_WINDOW_CLASS_INPUT_ONLY,
            screen->root_visual, 0, nullptr);
        xcb_set_selection_owner(connection, window, atom(connection, selection), XCB_CURRENT_TIME);
        atom(connection, selection); // the answer shows that the server has done it all
    }

private:
    Connection m_connection;
};

class X11CompositingTest : public testing::Test {
protected:
    /// Hands all events that the server has sent to `compositing`, as the toolkit does.
    void deliverEvents(X11Compositing& compositing) {
        atom(connection.get(), "_NET_WM_CM_S0"); // whatever was sent before is here after this
        for (;;) {
            const std::unique_ptr<xcb_generic_event_t, Free> event(
                xcb_poll_for_event(connection.get()));
            if (!event)
                return;
            EXPECT_FALSE(
                compositing.nativeEventFilter("xcb_generic_event_t", event.get(), nullptr));
        }
    }

    PrivateDisplay display;
    ScopedEnvironment environment{"DISPLAY", display.name()};
    Connection connection{xcb_connect(nullptr, nullptr)};
};

TEST_F(X11CompositingTest, IsOffWithoutAManager) {
    EXPECT_FALSE(X11Compositing(connection.get()).isActive());
}

TEST_F(X11CompositingTest, IsOnWithAManager) {
    const CompositingManager manager(display.name());
    EXPECT_TRUE(X11Compositing(connection.get()).isActive());
}

TEST_F(X11CompositingTest, FollowsAManagerThatStartsAndEnds) {
    X11Compositing compositing(connection.get());
    const QSignalSpy changed(&compositing, &Compositing::changed);
    {
        const CompositingManager manager(display.name());
        deliverEvents(compositing);
        EXPECT_TRUE(compositing.isActive());
        EXPECT_EQ(changed.count(), 1);
    }
    // The server notices the end of a connection in its own time.
    EXPECT_TRUE(QTest::qWaitFor([&] {
        deliverEvents(compositing);
        return !compositing.isActive();
    }));
    EXPECT_EQ(changed.count(), 2);
}

TEST_F(X11CompositingTest, IsNotConcernedWithOtherSelections) {
    X11Compositing compositing(connection.get());
    const CompositingManager other(display.name(), "_NET_WM_CM_S1");
    EXPECT_FALSE(X11Compositing(connection.get()).isActive());
    deliverEvents(compositing);
    EXPECT_FALSE(compositing.isActive());
}

TEST_F(X11CompositingTest, LooksAtTheScreenThatTheDisplayNames) {
    const ScopedEnvironment second("DISPLAY", display.name() + ".1");
    const CompositingManager manager(display.name(), "_NET_WM_CM_S1");
    EXPECT_TRUE(X11Compositing(connection.get()).isActive());
}

} // namespace
} // namespace lumora::tests

#include "linux/session/X11Windows.h"

#include "linux/appearance/X11Client.h"

#include <gmock/gmock.h>

#include <vector>

using testing::ElementsAre;

namespace lumora {
namespace {

class X11WindowsTest : public tests::X11ClientTest {
protected:
    xcb_window_t root() const {
        return xcb_setup_roots_iterator(xcb_get_setup(connection.get())).data->root;
    }

    xcb_atom_t atom(const QByteArray& name) const { return internAtom(connection.get(), name); }
};

TEST_F(X11WindowsTest, KeepsAWindowOffTaskBarAndPager) {
    const xcb_window_t window = xcb_generate_id(connection.get());
    xcb_create_window(
        connection.get(), 0, window, root(), 0, 0, 1, 1, 0, XCB_WINDOW_CLASS_INPUT_OUTPUT, 0, 0,
        nullptr);
    keepOffTaskBar(connection.get(), window);

    const auto cookie = xcb_get_property(
        connection.get(), false, window, atom("_NET_WM_STATE"), XCB_ATOM_ATOM, 0, 16);
    const ReplyPointer<xcb_get_property_reply_t> reply(
        xcb_get_property_reply(connection.get(), cookie, nullptr));
    ASSERT_TRUE(reply);
    const auto* states = static_cast<const xcb_atom_t*>(xcb_get_property_value(reply.get()));
    const std::vector<xcb_atom_t> set(states, states + reply->value_len);
    EXPECT_THAT(
        set, ElementsAre(atom("_NET_WM_STATE_SKIP_TASKBAR"), atom("_NET_WM_STATE_SKIP_PAGER")));
}

TEST_F(X11WindowsTest, KnowsWhoHoldsASelection) {
    const auto name = [this] { return selectionOwnerName(connection.get(), "_NET_SYSTEM_TRAY_S"); };
    EXPECT_EQ(name(), QString());
    tests::SelectionOwner tray(display.name(), "_NET_SYSTEM_TRAY_S0");
    EXPECT_EQ(name(), QString());
    tray.setProperty("WM_NAME", "trayer");
    EXPECT_EQ(name(), QStringLiteral("trayer"));
}

TEST_F(X11WindowsTest, TellsTheDesktopThatAStartIsOver) {
    const tests::X11Connection desktop(xcb_connect(display.name().constData(), nullptr));
    const std::uint32_t events = XCB_EVENT_MASK_PROPERTY_CHANGE;
    xcb_change_window_attributes(desktop.get(), root(), XCB_CW_EVENT_MASK, &events);
    internAtom(desktop.get(), "ANYTHING"); // it listens once this is answered

    completeStartup(connection.get(), "gnome \"shell\"/a\\b_TIME1234567890");
    internAtom(connection.get(), "ANYTHING");
    internAtom(desktop.get(), "ANYTHING");
    QByteArray message;
    std::vector<xcb_atom_t> types;
    while (xcb_generic_event_t* received = xcb_poll_for_event(desktop.get())) {
        const ReplyPointer<xcb_generic_event_t> event(received);
        ASSERT_EQ(eventKind(*event), XCB_CLIENT_MESSAGE);
        const auto* part = reinterpret_cast<const xcb_client_message_event_t*>(event.get());
        EXPECT_EQ(part->window, root());
        types.push_back(part->type);
        message.append(reinterpret_cast<const char*>(part->data.data8), sizeof(part->data.data8));
    }
    EXPECT_EQ(
        QByteArray(message.constData()),
        "remove: ID=\"gnome \\\"shell\\\"/a\\\\b_TIME1234567890\"");
    const xcb_atom_t further = atom("_NET_STARTUP_INFO");
    EXPECT_THAT(types, ElementsAre(atom("_NET_STARTUP_INFO_BEGIN"), further, further));
}

} // namespace
} // namespace lumora

#include "linux/session/X11Windows.h"

#include "linux/appearance/X11Replies.h"
#include "linux/appearance/X11Selection.h"

#include <algorithm>
#include <array>
#include <cstring>

namespace lumora {

namespace {

/// The text in double quotes, as the startup notification protocol wants it.
QByteArray quoted(QByteArray text) {
    text.replace('\\', "\\\\").replace('"', "\\\"");
    return '"' + text + '"';
}

void broadcast(
    xcb_connection_t* connection, xcb_window_t root, const QByteArray& message, xcb_atom_t first,
    xcb_atom_t further) {
    // It ends with a zero byte, and with the packet that has it.
    const QByteArray bytes = message + '\0';
    xcb_client_message_event_t event{};
    constexpr auto packet = qsizetype(sizeof(event.data.data8));
    event.response_type = XCB_CLIENT_MESSAGE;
    event.format = 8;
    event.window = root;
    for (qsizetype from = 0; from < bytes.size(); from += packet) {
        event.type = from == 0 ? first : further;
        std::ranges::fill(event.data.data8, std::uint8_t(0));
        std::memcpy(
            event.data.data8, bytes.constData() + from,
            std::size_t(std::min(packet, bytes.size() - from)));
        xcb_send_event(
            connection, false, root, XCB_EVENT_MASK_PROPERTY_CHANGE,
            reinterpret_cast<const char*>(&event));
    }
}

} // namespace

void keepOffTaskBar(xcb_connection_t* connection, std::uint32_t window) {
    // At once: the panel waits for the answers each time it opens.
    const auto [state, noTaskBar, noPager] = internAtoms<3>(
        connection, {"_NET_WM_STATE", "_NET_WM_STATE_SKIP_TASKBAR", "_NET_WM_STATE_SKIP_PAGER"});
    const std::array states{noTaskBar, noPager};
    xcb_change_property(
        connection, XCB_PROP_MODE_REPLACE, window, state, XCB_ATOM_ATOM, 32,
        std::uint32_t(states.size()), states.data());
    xcb_flush(connection);
}

void completeStartup(xcb_connection_t* connection, const QByteArray& activationToken) {
    const QByteArray message = "remove: ID=" + quoted(activationToken);
    const auto [first, further] =
        internAtoms<2>(connection, {"_NET_STARTUP_INFO_BEGIN", "_NET_STARTUP_INFO"});
    auto roots = xcb_setup_roots_iterator(xcb_get_setup(connection));
    for (; roots.rem > 0; xcb_screen_next(&roots))
        broadcast(connection, roots.data->root, message, first, further);
    xcb_flush(connection);
}

QString selectionOwnerName(xcb_connection_t* connection, const QByteArray& prefix) {
    const std::uint32_t owner = X11Selection(connection, prefix).owner();
    if (owner == XCB_WINDOW_NONE)
        return {};
    constexpr std::uint32_t longest = 64; // in units of four bytes
    const auto cookie = xcb_get_property(
        connection, false, owner, XCB_ATOM_WM_NAME, XCB_GET_PROPERTY_TYPE_ANY, 0, longest);
    const ReplyPointer<xcb_get_property_reply_t> reply(
        xcb_get_property_reply(connection, cookie, nullptr));
    if (!reply)
        return {};
    const auto* name = static_cast<const char*>(xcb_get_property_value(reply.get()));
    return QString::fromUtf8(name, xcb_get_property_value_length(reply.get()));
}

} // namespace lumora

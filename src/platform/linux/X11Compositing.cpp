#include "platform/linux/X11Compositing.h"

#include <QCoreApplication>

#include <xcb/xcb.h>
#include <xcb/xfixes.h>

#include <cstdlib>
#include <memory>

namespace lumora {

namespace {

struct Free {
    void operator()(void* reply) const { std::free(reply); }
};

template <typename Reply>
using ReplyPointer = std::unique_ptr<Reply, Free>;

int defaultScreen() {
    char* host = nullptr;
    int display = 0;
    int screen = 0;
    const bool named = xcb_parse_display(nullptr, &host, &display, &screen) != 0;
    std::free(host);
    return named ? screen : 0;
}

xcb_window_t rootWindow(xcb_connection_t* connection, int screen) {
    auto roots = xcb_setup_roots_iterator(xcb_get_setup(connection));
    for (int i = 0; i < screen && roots.rem > 1; ++i)
        xcb_screen_next(&roots);
    return roots.data->root;
}

xcb_atom_t compositingSelection(xcb_connection_t* connection, int screen) {
    const QByteArray name = "_NET_WM_CM_S" + QByteArray::number(screen);
    const auto cookie =
        xcb_intern_atom(connection, false, std::uint16_t(name.size()), name.constData());
    const ReplyPointer<xcb_intern_atom_reply_t> reply(
        xcb_intern_atom_reply(connection, cookie, nullptr));
    return reply ? reply->atom : xcb_atom_t(XCB_ATOM_NONE);
}

bool isOwned(xcb_connection_t* connection, xcb_atom_t selection) {
    const ReplyPointer<xcb_get_selection_owner_reply_t> reply(xcb_get_selection_owner_reply(
        connection, xcb_get_selection_owner(connection, selection), nullptr));
    return reply && reply->owner != XCB_WINDOW_NONE;
}

/// Asks to be told of new owners and of the end of owners; returns the number of that event.
int watchSelection(xcb_connection_t* connection, xcb_window_t root, xcb_atom_t selection) {
    const auto* extension = xcb_get_extension_data(connection, &xcb_xfixes_id);
    if (!extension || !extension->present)
        return 0;
    // The toolkit uses the same connection and extension: never agree on less than it needs.
    const auto version =
        xcb_xfixes_query_version(connection, XCB_XFIXES_MAJOR_VERSION, XCB_XFIXES_MINOR_VERSION);
    const ReplyPointer<xcb_xfixes_query_version_reply_t> agreed(
        xcb_xfixes_query_version_reply(connection, version, nullptr));
    xcb_xfixes_select_selection_input(
        connection, root, selection,
        XCB_XFIXES_SELECTION_EVENT_MASK_SET_SELECTION_OWNER |
            XCB_XFIXES_SELECTION_EVENT_MASK_SELECTION_WINDOW_DESTROY |
            XCB_XFIXES_SELECTION_EVENT_MASK_SELECTION_CLIENT_CLOSE);
    return extension->first_event + XCB_XFIXES_SELECTION_NOTIFY;
}

} // namespace

X11Compositing::X11Compositing(xcb_connection_t* connection)
    : Compositing(false)
    , m_selection(compositingSelection(connection, defaultScreen()))
    , m_selectionNotify(
          watchSelection(connection, rootWindow(connection, defaultScreen()), m_selection)) {
    setActive(isOwned(connection, m_selection));
    if (auto* application = QCoreApplication::instance())
        application->installNativeEventFilter(this);
}

// An event filter takes itself off when it is destroyed.
X11Compositing::~X11Compositing() = default;

bool X11Compositing::nativeEventFilter(const QByteArray&, void* message, qintptr*) {
    constexpr int sentByClient = 0x80;
    const auto* event = static_cast<const xcb_generic_event_t*>(message);
    if (m_selectionNotify == 0 || (event->response_type & ~sentByClient) != m_selectionNotify)
        return false;
    const auto* notify = reinterpret_cast<const xcb_xfixes_selection_notify_event_t*>(event);
    if (notify->selection == m_selection)
        setActive(notify->owner != XCB_WINDOW_NONE);
    return false;
}

} // namespace lumora

#include "linux/appearance/X11Selection.h"

#include "linux/appearance/X11Replies.h"

#include <QCoreApplication>

#include <xcb/xfixes.h>

namespace lumora {

namespace {

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

xcb_window_t ownerOf(xcb_connection_t* connection, xcb_atom_t selection) {
    const ReplyPointer<xcb_get_selection_owner_reply_t> reply(xcb_get_selection_owner_reply(
        connection, xcb_get_selection_owner(connection, selection), nullptr));
    return reply ? reply->owner : xcb_window_t(XCB_WINDOW_NONE);
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

X11Selection::X11Selection(xcb_connection_t* connection, const QByteArray& prefix)
    : m_selection(internAtom(connection, prefix + QByteArray::number(defaultScreen())))
    , m_selectionNotify(
          watchSelection(connection, rootWindow(connection, defaultScreen()), m_selection))
    , m_owner(ownerOf(connection, m_selection)) {
    if (auto* application = QCoreApplication::instance())
        application->installNativeEventFilter(this);
}

// An event filter takes itself off when it is destroyed.
X11Selection::~X11Selection() = default;

bool X11Selection::nativeEventFilter(const QByteArray&, void* message, qintptr*) {
    const auto* event = static_cast<const xcb_generic_event_t*>(message);
    if (m_selectionNotify == 0 || eventKind(*event) != m_selectionNotify)
        return false;
    const auto* notify = reinterpret_cast<const xcb_xfixes_selection_notify_event_t*>(event);
    if (notify->selection == m_selection && notify->owner != m_owner) {
        m_owner = notify->owner;
        Q_EMIT ownerChanged();
    }
    return false;
}

} // namespace lumora

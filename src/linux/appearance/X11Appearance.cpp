#include "linux/appearance/X11Appearance.h"

#include "linux/appearance/X11Replies.h"
#include "linux/appearance/XSettings.h"

#include <QCoreApplication>

namespace lumora {

X11Appearance::X11Appearance(xcb_connection_t* connection)
    : m_connection(connection)
    , m_manager(connection, "_XSETTINGS_S")
    , m_property(internAtom(connection, "_XSETTINGS_SETTINGS")) {
    connect(&m_manager, &X11Selection::ownerChanged, this, &X11Appearance::followManager);
    if (auto* application = QCoreApplication::instance())
        application->installNativeEventFilter(this);
    followManager();
}

// An event filter takes itself off when it is destroyed.
X11Appearance::~X11Appearance() = default;

bool X11Appearance::nativeEventFilter(const QByteArray&, void* message, qintptr*) {
    const auto* event = static_cast<const xcb_generic_event_t*>(message);
    if (eventKind(*event) != XCB_PROPERTY_NOTIFY)
        return false;
    const auto* notify = reinterpret_cast<const xcb_property_notify_event_t*>(event);
    if (notify->window == m_manager.owner() && notify->atom == m_property)
        read();
    return false;
}

void X11Appearance::followManager() {
    // Between two managers the wishes stay as they were: nobody has changed them.
    if (m_manager.owner() == XCB_WINDOW_NONE)
        return;
    // The toolkit looks at the same window over the same connection, for these very events.
    const std::uint32_t events = XCB_EVENT_MASK_STRUCTURE_NOTIFY | XCB_EVENT_MASK_PROPERTY_CHANGE;
    xcb_change_window_attributes(m_connection, m_manager.owner(), XCB_CW_EVENT_MASK, &events);
    read();
}

void X11Appearance::read() {
    constexpr std::uint32_t maximumWords = 64 * 1024;
    const auto cookie = xcb_get_property(
        m_connection, false, m_manager.owner(), m_property, m_property, 0, maximumWords);
    const ReplyPointer<xcb_get_property_reply_t> reply(
        xcb_get_property_reply(m_connection, cookie, nullptr));
    if (!reply)
        return;
    const QByteArray property(
        static_cast<const char*>(xcb_get_property_value(reply.get())),
        xcb_get_property_value_length(reply.get()));
    setWishes(wishesIn(parseXSettings(property)));
}

} // namespace lumora

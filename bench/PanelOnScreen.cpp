#include "PanelOnScreen.h"

#include <QDBusConnection>
#include <QElapsedTimer>
#include <QPoint>

#include <unistd.h>
#include <xcb/xcb.h>

#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <stdexcept>

using namespace Qt::Literals::StringLiterals;

namespace lumora {

namespace {

/// A colour that no panel has.
constexpr std::uint32_t ground = 0x00ff00ff;

/// The item's place: in the middle of the upper edge.
constexpr QPoint itemPosition(640, 2);

/// Rows of the screen that the panel covers, from its header to well below it.
constexpr std::int16_t panelRows[] = {60, 200, 320};

std::uint32_t pixel(xcb_connection_t* screen, xcb_window_t root, std::int16_t y) {
    struct Free {
        void operator()(void* reply) const { std::free(reply); }
    };

    const auto cookie = xcb_get_image(
        screen, XCB_IMAGE_FORMAT_Z_PIXMAP, root, std::int16_t(itemPosition.x()), y, 1, 1, ~0U);
    const std::unique_ptr<xcb_get_image_reply_t, Free> reply(
        xcb_get_image_reply(screen, cookie, nullptr));
    if (!reply)
        throw std::runtime_error("the screen cannot be read");
    std::uint32_t color = 0;
    std::memcpy(&color, xcb_get_image_data(reply.get()), sizeof color);
    return color & 0x00ffffff;
}

const xcb_screen_t& screenOf(xcb_connection_t* connection) {
    return *xcb_setup_roots_iterator(xcb_get_setup(connection)).data;
}

/// The bus name in what an item registered by, a name or a name and a path.
QString busName(const QString& registered) {
    return registered.section(u'/', 0, 0);
}

} // namespace

void PanelOnScreen::Disconnect::operator()(xcb_connection_t* connection) const {
    xcb_disconnect(connection);
}

PanelOnScreen::PanelOnScreen(PrivateDesktop& desktop)
    : m_screen(xcb_connect(desktop.display().toLatin1().constData(), nullptr))
    , m_item(
          busName(desktop.items().constLast()), u"/StatusNotifierItem"_s,
          u"org.kde.StatusNotifierItem"_s, desktop.connectToSession()) {
    if (xcb_connection_has_error(m_screen.get()) != 0)
        throw std::runtime_error("there is no screen");
    paintScreen();
}

void PanelOnScreen::paintScreen() {
    const auto& screen = screenOf(m_screen.get());
    xcb_change_window_attributes(m_screen.get(), screen.root, XCB_CW_BACK_PIXEL, &ground);
    xcb_clear_area(m_screen.get(), false, screen.root, 0, 0, 0, 0);
    xcb_warp_pointer(
        m_screen.get(), XCB_NONE, screen.root, 0, 0, 0, 0, std::int16_t(itemPosition.x()),
        std::int16_t(itemPosition.y()));
    waitUntil(false);
}

double PanelOnScreen::open() {
    QElapsedTimer timer;
    timer.start();
    press();
    waitUntil(true);
    return static_cast<double>(timer.nsecsElapsed()) / 1e6;
}

void PanelOnScreen::close() {
    // A second press right after the first would be a double click, which closes nothing.
    constexpr useconds_t afterADoubleClick = 500'000;
    usleep(afterADoubleClick);
    press();
    waitUntil(false);
}

void PanelOnScreen::press() {
    m_item.call(QDBus::NoBlock, u"Activate"_s, itemPosition.x(), itemPosition.y());
}

bool PanelOnScreen::showsPanel() const {
    const auto root = screenOf(m_screen.get()).root;
    return std::ranges::all_of(
        panelRows, [&](std::int16_t y) { return pixel(m_screen.get(), root, y) != ground; });
}

void PanelOnScreen::waitUntil(bool panelIsShown) const {
    constexpr qint64 mostMilliseconds = 5000;
    constexpr useconds_t pollMicroseconds = 200; // leaves the processors to those who draw
    QElapsedTimer timer;
    timer.start();
    while (showsPanel() != panelIsShown) {
        if (timer.elapsed() > mostMilliseconds)
            throw std::runtime_error("the panel did not come or go within 5 seconds");
        usleep(pollMicroseconds);
    }
}

} // namespace lumora

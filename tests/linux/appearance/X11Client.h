#pragma once

#include "linux/appearance/X11Replies.h"
#include "support/PrivateDisplay.h"
#include "support/ScopedEnvironment.h"

#include <QAbstractEventDispatcher>

#include <gtest/gtest.h>
#include <xcb/xcb.h>

#include <memory>

namespace lumora::tests {

struct Disconnect {
    void operator()(xcb_connection_t* connection) const { xcb_disconnect(connection); }
};

using X11Connection = std::unique_ptr<xcb_connection_t, Disconnect>;

/// A client that owns a selection, as services of the desktop do; it ends when it is destroyed.
class SelectionOwner {
public:
    SelectionOwner(const QByteArray& display, const QByteArray& selection)
        : m_connection(xcb_connect(display.constData(), nullptr))
        , m_window(xcb_generate_id(m_connection.get())) {
        const auto* screen = xcb_setup_roots_iterator(xcb_get_setup(m_connection.get())).data;
        xcb_create_window(
            m_connection.get(), 0, m_window, screen->root, 0, 0, 1, 1, 0,
            XCB_WINDOW_CLASS_INPUT_ONLY, screen->root_visual, 0, nullptr);
        xcb_set_selection_owner(
            m_connection.get(), m_window, internAtom(m_connection.get(), selection),
            XCB_CURRENT_TIME);
        synchronize();
    }

    /// Replaces a property of the owner's window, of the type that is named like it.
    void setProperty(const QByteArray& name, const QByteArray& value) {
        const auto property = internAtom(m_connection.get(), name);
        xcb_change_property(
            m_connection.get(), XCB_PROP_MODE_REPLACE, m_window, property, property, 8,
            std::uint32_t(value.size()), value.constData());
        synchronize();
    }

private:
    /// Any answer shows that the server has done everything before it.
    void synchronize() { internAtom(m_connection.get(), "ANYTHING"); }

    X11Connection m_connection;
    xcb_window_t m_window;
};

/// An X server, and a connection to it whose events reach the application's event filters.
class X11ClientTest : public testing::Test {
protected:
    /// Hands on all events that the server has sent, as the toolkit does.
    void deliverEvents() {
        internAtom(connection.get(), "ANYTHING"); // what was sent before is here after this
        while (auto* event = xcb_poll_for_event(connection.get())) {
            const ReplyPointer<xcb_generic_event_t> owner(event);
            EXPECT_FALSE(QAbstractEventDispatcher::instance()->filterNativeEvent(
                "xcb_generic_event_t", event, nullptr));
        }
    }

    PrivateDisplay display;
    ScopedEnvironment environment{"DISPLAY", display.name()};
    X11Connection connection{xcb_connect(nullptr, nullptr)};
};

} // namespace lumora::tests

#pragma once

#include "PrivateDesktop.h"

#include <QDBusInterface>

#include <memory>

struct xcb_connection_t;

namespace lumora {

/// The panel of a running program as a person meets it who presses the status item: what counts
/// is what the X server's screen shows.
class PanelOnScreen {
public:
    /// Of the status item that was registered last on `desktop`. Throws without a screen.
    explicit PanelOnScreen(PrivateDesktop& desktop);

    /// Presses the item; milliseconds until the panel's pixels are on the screen.
    double open();

    /// Presses the item and waits until the panel is gone.
    void close();

private:
    struct Disconnect {
        void operator()(xcb_connection_t* connection) const;
    };

    void press();
    void paintScreen();
    bool showsPanel() const;
    void waitUntil(bool panelIsShown) const;

    std::unique_ptr<xcb_connection_t, Disconnect> m_screen;
    QDBusInterface m_item;
};

} // namespace lumora

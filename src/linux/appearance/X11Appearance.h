#pragma once

#include "linux/appearance/X11Selection.h"
#include "platform/DesktopAppearance.h"

#include <QAbstractNativeEventFilter>

namespace lumora {

/// Reads the user's wishes from the X11 desktop's settings manager and follows their changes.
/// Desktops on Wayland run one too, for the programs on their X server.
class X11Appearance final : public DesktopAppearance, public QAbstractNativeEventFilter {
    Q_OBJECT

public:
    /// `connection` is the application's own and outlives this object.
    explicit X11Appearance(xcb_connection_t* connection);
    ~X11Appearance() override;

    bool nativeEventFilter(const QByteArray& eventType, void* message, qintptr* result) override;

private:
    void followManager();
    void read();

    xcb_connection_t* m_connection;
    X11Selection m_manager;
    std::uint32_t m_property;
};

} // namespace lumora

#pragma once

#include "linux/wayland/WaylandGlobals.h"

#include <QByteArray>
#include <QTimer>

#include <functional>

namespace lumora {

/// Asks a compositor once for a token that lets another program come to the front, because of the
/// user's last press. The answer comes from the event loop, unless this ends before.
class ActivationRequest {
public:
    /// `surface` is the one in which the user is; may be null. The token is empty where the
    /// compositor knows of none or is slow.
    ActivationRequest(
        const WaylandGlobals& globals, wl_surface* surface,
        std::function<void(const QByteArray& token)> given);
    ActivationRequest(const ActivationRequest&) = delete;
    ActivationRequest& operator=(const ActivationRequest&) = delete;

private:
    void give(const QByteArray& token);

    std::function<void(const QByteArray& token)> m_given; ///< empty once the answer was given
    WaylandPtr<xdg_activation_token_v1> m_token;
    QTimer m_patience;
};

} // namespace lumora

#pragma once

#include <QByteArray>
#include <QString>

#include <cstdint>

struct xcb_connection_t;

namespace lumora {

/// Has task bars and pagers leave out `window`, which must not be mapped: window managers forget
/// this with each unmapping.
void keepOffTaskBar(xcb_connection_t* connection, std::uint32_t window);

/// Tells the desktop that what was started with `activationToken` is there, on all screens: until
/// then it shows a busy pointer.
void completeStartup(xcb_connection_t* connection, const QByteArray& activationToken);

/// What the window is called that holds the selection with this prefix on the default screen, as
/// services of the desktop do; empty when there is none, or it has no name.
[[nodiscard]] QString selectionOwnerName(xcb_connection_t* connection, const QByteArray& prefix);

} // namespace lumora

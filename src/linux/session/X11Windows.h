#pragma once

#include <QByteArray>

#include <cstdint>

struct xcb_connection_t;

namespace lumora {

/// Has task bars and pagers leave out `window`, which must not be mapped: window managers forget
/// this with each unmapping.
void keepOffTaskBar(xcb_connection_t* connection, std::uint32_t window);

/// Tells the desktop that what was started with `activationToken` is there, on all screens: until
/// then it shows a busy pointer.
void completeStartup(xcb_connection_t* connection, const QByteArray& activationToken);

} // namespace lumora

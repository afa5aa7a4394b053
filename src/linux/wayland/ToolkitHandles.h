#pragma once

class QScreen;
class QWindow;
struct wl_display;
struct wl_output;
struct wl_surface;

// What the toolkit's things are to the compositor: the only place that knows how to get at it.

namespace lumora {

/// The application's connection; null where it has none to a compositor.
[[nodiscard]] wl_display* displayOfApplication();

[[nodiscard]] wl_output* outputOf(QScreen* screen);

/// Of a window that has been created; null while there is none.
[[nodiscard]] wl_surface* surfaceOf(QWindow* window);

} // namespace lumora

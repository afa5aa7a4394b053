#pragma once

#include "platform/Compositing.h"
#include "platform/DesktopAppearance.h"

#include <QByteArray>
#include <QObject>
#include <QPoint>
#include <QString>

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>

namespace lumora {

/// What the window system lets a program do and know.
struct WindowSystem {
    bool placesWindows; ///< whether a window appears where the program asks for
    bool tellsPointer;  ///< whether the pointer is known while it is over other programs

    bool operator==(const WindowSystem&) const = default;
};

/// `platform` is the name of the toolkit's platform plug-in; `insideWayland` says that there is a
/// Wayland compositor, so that "xcb" talks to a guest of it.
WindowSystem windowSystem(const QString& platform, bool insideWayland);

/// The one that the running application uses.
WindowSystem currentWindowSystem();

/// Where the pointer is, in points; absent where nobody tells.
std::optional<QPoint> pointerPosition();

/// Has task bars and pagers leave out the window with the toolkit's number `window`, which is not
/// shown yet. Where there is no way to ask for that, nothing happens.
void keepOffTaskBar(std::uintptr_t window);

/// Tells the desktop that what an activation token was given for is on the screen. A token that is
/// empty, or was used up by the window system itself, needs no word.
void completeStartup(const QByteArray& activationToken);

/// The program that keeps the tray of the old kind, by the name that its window there has; empty
/// where there is none or it says nothing.
[[nodiscard]] QString trayKeeper();

/// Calls `changed` whenever another program keeps the tray of the old kind, or none does any more,
/// as long as what it returns lives. Null where there is no such tray.
[[nodiscard]] std::unique_ptr<QObject> watchTray(std::function<void()> changed);

/// Follows the running application's desktop.
std::unique_ptr<Compositing> makeCompositing();

/// The user's wishes as the window system knows them; null where it knows none.
std::unique_ptr<DesktopAppearance> makeWindowSystemAppearance();

} // namespace lumora

#include "linux/session/WindowSystem.h"

#include "linux/appearance/X11Appearance.h"
#include "linux/appearance/X11Compositing.h"
#include "linux/appearance/X11Selection.h"
#include "linux/session/X11Windows.h"

#include <QCursor>
#include <QGuiApplication>

using namespace Qt::Literals::StringLiterals;

namespace lumora {

namespace {

constexpr auto x11Platform = "xcb"_L1;

/// Whose owner keeps the tray of the old kind, without the screen's number.
constexpr char traySelection[] = "_NET_SYSTEM_TRAY_S";

/// The application's connection to the X server; null where it has none.
xcb_connection_t* x11Connection() {
    if (QGuiApplication::platformName() != x11Platform)
        return nullptr;
    return qGuiApp->nativeInterface<QNativeInterface::QX11Application>()->connection();
}

} // namespace

WindowSystem windowSystem(const QString& platform, bool insideWayland) {
    return {
        .placesWindows = !platform.startsWith("wayland"_L1),
        .tellsPointer = platform == x11Platform && !insideWayland,
    };
}

WindowSystem currentWindowSystem() {
    return windowSystem(
        QGuiApplication::platformName(), !qEnvironmentVariableIsEmpty("WAYLAND_DISPLAY"));
}

std::optional<QPoint> pointerPosition() {
    if (!currentWindowSystem().tellsPointer)
        return std::nullopt;
    return QCursor::pos();
}

void keepOffTaskBar(std::uintptr_t window) {
    if (auto* connection = x11Connection())
        keepOffTaskBar(connection, std::uint32_t(window));
}

void completeStartup(const QByteArray& activationToken) {
    auto* connection = x11Connection();
    if (connection && !activationToken.isEmpty())
        completeStartup(connection, activationToken);
}

QString trayKeeper() {
    auto* connection = x11Connection();
    return connection ? selectionOwnerName(connection, traySelection) : QString();
}

std::unique_ptr<QObject> watchTray(std::function<void()> changed) {
    auto* connection = x11Connection();
    if (!connection)
        return nullptr;
    auto selection = std::make_unique<X11Selection>(connection, traySelection);
    QObject::connect(
        selection.get(), &X11Selection::ownerChanged, selection.get(), std::move(changed));
    return selection;
}

std::unique_ptr<Compositing> makeCompositing() {
    // Whatever is not X11 has no other way to show windows than to blend them.
    auto* connection = x11Connection();
    if (!connection)
        return std::make_unique<Compositing>(true);
    return std::make_unique<X11Compositing>(connection);
}

std::unique_ptr<DesktopAppearance> makeWindowSystemAppearance() {
    auto* connection = x11Connection();
    return connection ? std::make_unique<X11Appearance>(connection) : nullptr;
}

} // namespace lumora

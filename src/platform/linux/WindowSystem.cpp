#include "platform/linux/WindowSystem.h"

#include "platform/linux/X11Compositing.h"

#include <QCursor>
#include <QGuiApplication>

using namespace Qt::Literals::StringLiterals;

namespace lumora {

namespace {

constexpr auto x11Platform = "xcb"_L1;

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

std::unique_ptr<Compositing> makeCompositing() {
    // Whatever is not X11 has no other way to show windows than to blend them.
    if (QGuiApplication::platformName() != x11Platform)
        return std::make_unique<Compositing>(true);
    const auto* x11 = qGuiApp->nativeInterface<QNativeInterface::QX11Application>();
    return std::make_unique<X11Compositing>(x11->connection());
}

} // namespace lumora

#include "linux/wayland/ToolkitHandles.h"

#include <QGuiApplication>
#include <qpa/qplatformnativeinterface.h>

namespace lumora {

wl_display* displayOfApplication() {
    return static_cast<wl_display*>(
        QGuiApplication::platformNativeInterface()->nativeResourceForIntegration("wl_display"));
}

wl_output* outputOf(QScreen* screen) {
    return static_cast<wl_output*>(
        QGuiApplication::platformNativeInterface()->nativeResourceForScreen("output", screen));
}

wl_surface* surfaceOf(QWindow* window) {
    return static_cast<wl_surface*>(
        QGuiApplication::platformNativeInterface()->nativeResourceForWindow("surface", window));
}

} // namespace lumora

#include "ui/window/DesktopScreens.h"

#include <QGuiApplication>
#include <QScreen>

namespace lumora {

QList<PlacementScreen> desktopScreens() {
    QList<PlacementScreen> screens;
    for (const QScreen* screen : QGuiApplication::screens()) {
        screens.append({
            .geometry = screen->geometry(),
            .available = screen->availableGeometry(),
            .scale = screen->devicePixelRatio(),
        });
    }
    return screens;
}

} // namespace lumora

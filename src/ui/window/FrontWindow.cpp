#include "ui/window/FrontWindow.h"

#include "platform/ActivationToken.h"

#include <QWidget>

namespace lumora {

void bringToFront(QWidget& window, const QByteArray& activationToken) {
    const ActivationTokenScope token(activationToken); // which the toolkit takes on Wayland
    window.show();
    window.raise();
    window.activateWindow();
}

} // namespace lumora

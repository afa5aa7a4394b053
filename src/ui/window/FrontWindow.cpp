#include "ui/window/FrontWindow.h"

#include "platform/ActivationToken.h"

#include <QApplication>
#include <QWidget>

namespace lumora {

void bringToFront(QWidget& window, const QByteArray& activationToken) {
    const ActivationTokenScope token(activationToken); // which the toolkit takes on Wayland
    window.show();
    window.raise();
    window.activateWindow();
}

bool hasActivePart(const QWidget& window) {
    if (QApplication::activePopupWidget())
        return true;
    const QWidget* active = QApplication::activeWindow();
    while (active && active != &window)
        active = active->parentWidget();
    return active != nullptr;
}

} // namespace lumora

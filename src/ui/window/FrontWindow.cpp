#include "ui/window/FrontWindow.h"

#include <QWidget>

namespace lumora {

namespace {

constexpr char tokenVariable[] = "XDG_ACTIVATION_TOKEN";

} // namespace

void bringToFront(QWidget& window, const QByteArray& activationToken) {
    // On Wayland the toolkit takes the token from there when a window asks to be activated.
    if (!activationToken.isEmpty())
        qputenv(tokenVariable, activationToken);
    window.show();
    window.raise();
    window.activateWindow();
    qunsetenv(tokenVariable);
}

} // namespace lumora

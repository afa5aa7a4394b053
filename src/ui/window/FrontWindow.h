#pragma once

class QByteArray;
class QWidget;

namespace lumora {

/// Shows `window` in front of all others and gives it the keyboard, as far as the desktop allows.
/// The token is the one that came with what the user did; empty where there was none.
void bringToFront(QWidget& window, const QByteArray& activationToken);

/// Whether the window that is active now is a part of `window`: a menu or a dialog of its content.
[[nodiscard]] bool hasActivePart(const QWidget& window);

} // namespace lumora

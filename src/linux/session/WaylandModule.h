#pragma once

#include "platform/PanelLayer.h"

#include <memory>

namespace lumora {

/// Whether there is a Wayland compositor with a layer in front of all windows, for a program that
/// has yet to connect to it. Loads the program's module for those; false where that is missing.
[[nodiscard]] bool waylandHasPanelLayer();

/// The layer of the application's compositor; null where it has none, and on X11.
[[nodiscard]] std::unique_ptr<PanelLayer> makePanelLayer();

} // namespace lumora

#pragma once

#include "ui/window/PanelPlacement.h"

namespace lumora {

/// The monitors of the desktop, the first one first.
[[nodiscard]] QList<PlacementScreen> desktopScreens();

} // namespace lumora

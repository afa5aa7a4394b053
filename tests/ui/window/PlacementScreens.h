#pragma once

#include "ui/window/PanelPlacement.h"

#include <string>

namespace lumora::tests {

inline const QRect fullHd(0, 0, 1920, 1080);

inline PlacementScreen screenWith(const QRect& geometry, const QMargins& bars, double scale = 1) {
    return {.geometry = geometry, .available = geometry.marginsRemoved(bars), .scale = scale};
}

inline const PlacementScreen topBar = screenWith(fullHd, {0, 28, 0, 0});
inline const PlacementScreen bottomBar = screenWith(fullHd, {0, 0, 0, 44});
inline const PlacementScreen noBar = screenWith(fullHd, {});
inline const PlacementScreen secondScreen = screenWith({1920, 0, 1280, 1024}, {});

std::string nameOf(const auto& info) {
    return info.param.name;
}

} // namespace lumora::tests

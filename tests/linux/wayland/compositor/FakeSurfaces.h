#pragma once

#include <QSize>
#include <QString>

#include <chrono>
#include <cstdint>
#include <functional>

struct wl_display;

namespace lumora::tests {

/// What surfaces are given, and whom their requests are told.
struct FakeSurfaceRules {
    QSize room;
    std::chrono::milliseconds thinks;
    std::function<void(const QString& request)> asked;
};

/// Has `display` offer surfaces, viewports, and a layer of version `layerShell`, unless that is 0.
/// `rules` outlive the display.
void offerSurfaces(wl_display* display, std::uint32_t layerShell, const FakeSurfaceRules& rules);

} // namespace lumora::tests

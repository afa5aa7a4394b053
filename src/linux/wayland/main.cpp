#include "linux/wayland/ToolkitHandles.h"
#include "linux/wayland/WaylandPanelLayer.h"

// What the program finds in the module by name; see WaylandModule in linux/session.

extern "C" Q_DECL_EXPORT bool lumoraCompositorHasLayers() {
    return lumora::compositorHasLayers();
}

/// The caller owns the answer, which is null where the application is no guest of such a
/// compositor.
extern "C" Q_DECL_EXPORT lumora::PanelLayer* lumoraMakePanelLayer() {
    wl_display* const display = lumora::displayOfApplication();
    return display ? lumora::WaylandPanelLayer::make(display).release() : nullptr;
}

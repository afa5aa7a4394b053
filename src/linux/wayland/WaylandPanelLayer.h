#pragma once

#include "linux/wayland/ActivationRequest.h"
#include "linux/wayland/ArrowPointer.h"
#include "linux/wayland/LayerParts.h"
#include "linux/wayland/LayerSurface.h"
#include "linux/wayland/PointerCatcher.h"
#include "linux/wayland/WaylandGlobals.h"
#include "platform/PanelLayer.h"

#include <QPointer>
#include <QTimer>
#include <QWindow>

#include <memory>
#include <optional>
#include <vector>

namespace lumora {

/// The layer of compositors that let programs have surfaces in front of all windows.
class WaylandPanelLayer final : public PanelLayer {
public:
    /// Null where the compositor has no such layer, which is asked and waited for. `display` is the
    /// application's. Once at the start of the program: from then on the toolkit's windows with
    /// the flag to be left alone are, so that they can go into the layer.
    [[nodiscard]] static std::unique_ptr<WaylandPanelLayer> make(wl_display* display);

    ~WaylandPanelLayer() override;

    void open(QWindow& window, const Wish& wish, const Answers& answers) override;
    void place(const QRect& area) override;
    void close() override;
    void requestToken(const std::function<void(const QByteArray& token)>& given) override;

private:
    explicit WaylandPanelLayer(wl_display* display);

    void catchPointers();
    void onEntered(const WaylandInput::Entrance& entrance);
    void onPressed(const wl_surface* surface);
    void openPanel(QScreen* screen, std::optional<QPoint> pointer);
    void onConfigured(const QSize& usable);
    void onPartsChanged(const QRegion& covered);

    WaylandGlobals m_globals;
    ArrowPointer m_arrow{m_globals};
    QPointer<QWindow> m_window;
    Wish m_wish;
    Answers m_answers;
    Room m_room;
    QRect m_area; ///< the panel's
    std::vector<std::unique_ptr<PointerCatcher>> m_catchers;
    QTimer m_patience;                          ///< with the pointer; runs while it is waited for
    std::unique_ptr<LayerSurface> m_panel;      ///< null while the pointer is waited for
    std::unique_ptr<LayerParts> m_parts;        ///< of the panel; null until that is placed
    std::unique_ptr<ActivationRequest> m_token; ///< the one that was asked for last
};

} // namespace lumora

#pragma once

#include "linux/wayland/LayerSurface.h"

#include <QObject>
#include <QRect>
#include <QRegion>

#include <functional>
#include <map>

class QWindow;

namespace lumora {

/// Puts the menus and tips of a window in the layer into the layer as well, where they want to be:
/// compositors know of no other place for what belongs to such a window.
class LayerParts final : public QObject {
public:
    /// Where they all are.
    struct Place {
        zwlr_layer_shell_v1* shell;
        wl_output* output;
        QRect available; ///< the part of the screen that bars leave free, in points
        QPoint window;   ///< where the window is, which the toolkit does not know, in points
    };

    /// `changed` is called with what they cover whenever one comes or goes, in points.
    LayerParts(
        const QWindow& window, const Place& place,
        std::function<void(const QRegion& covered)> changed);
    ~LayerParts() override;

    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    struct Part {
        QRect area; ///< in points
        std::unique_ptr<LayerSurface> surface;
    };

    bool isPart(const QWindow* window) const;
    void adopt(QWindow* part);
    void place(const QWindow* part);
    void follow(QWindow* part);
    void release(QWindow* part);
    void tell() const;

    const QWindow& m_window;
    Place m_place;
    std::function<void(const QRegion& covered)> m_changed;
    std::map<const QWindow*, Part> m_parts;
};

} // namespace lumora

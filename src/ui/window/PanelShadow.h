#pragma once

#include <QMargins>
#include <QPixmap>
#include <QRect>

class QPainter;

namespace lumora {

/// The soft shadow around a rounded panel. It is rendered once per screen scale.
class PanelShadow {
public:
    /// How far the shadow reaches beyond the panel, in points.
    [[nodiscard]] static QMargins margins();

    /// Paints the shadow that a panel with corners of `radius` points throws when it covers
    /// `panel`; what lies under the panel itself is left out.
    void paint(QPainter& painter, const QRect& panel, int radius);

private:
    QPixmap m_tile; ///< four corners around a centre of one point; null until painted
    int m_radius = 0;
};

} // namespace lumora

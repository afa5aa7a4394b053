#include "ui/window/PanelGround.h"

#include "ui/theme/Theme.h"

#include <QPainter>

#include <cmath>

namespace lumora {

namespace {

/// Of the panel, in points.
constexpr double panelRadius = 11;

} // namespace

void PanelGround::paint(QPainter& painter, const QRect& panel, const Theme& theme, Shape shape) {
    const QColor background = theme.color(ColorRole::Background);
    if (shape == Shape::Square) {
        painter.fillRect(panel, background);
        painter.setPen(theme.color(ColorRole::Tertiary));
        painter.drawRect(panel.adjusted(0, 0, -1, -1));
        return;
    }
    const double radius = theme.exact(panelRadius);
    if (shape == Shape::RoundWithShadow)
        m_shadow.paint(painter, panel, int(std::lround(radius)));
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    painter.setBrush(background);
    painter.drawRoundedRect(panel, radius, radius);
}

} // namespace lumora

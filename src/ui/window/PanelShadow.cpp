#include "ui/window/PanelShadow.h"

#include <QImage>
#include <QPaintEngine>
#include <QPainter>

#include <algorithm>
#include <array>
#include <cmath>

namespace lumora {

namespace {

constexpr int blur = 24;  ///< from full shadow to none, beyond the panel's edge
constexpr int offset = 7; ///< the light comes from above
constexpr double strength = 0.30;

/// How much of the panel belongs to a corner of the tile: beyond it, the shadow is straight.
int cornerInset(int radius) {
    return radius + blur;
}

/// The distance from the outline of a rounded square of `side` points; negative inside.
double distanceToOutline(QPointF fromCentre, double side, double radius) {
    const double x = std::abs(fromCentre.x()) - side / 2 + radius;
    const double y = std::abs(fromCentre.y()) - side / 2 + radius;
    return std::hypot(std::max(x, 0.0), std::max(y, 0.0)) + std::min(std::max(x, y), 0.0) - radius;
}

/// From 1 well inside to 0 at the end of the blur, without a visible end on either side.
double fade(double distance) {
    const double t = std::clamp((distance + blur) / (2.0 * blur), 0.0, 1.0);
    const double smooth = t * t * (3 - 2 * t);
    return (1 - smooth) * (1 - t * 0.35);
}

QPixmap renderTile(int radius, qreal scale) {
    const double side = 2 * cornerInset(radius) + 1;
    const double whole = side + 2 * blur;
    const int pixels = int(std::ceil(whole * scale));
    QImage image(pixels, pixels, QImage::Format_ARGB32_Premultiplied);
    image.setDevicePixelRatio(scale);
    for (int y = 0; y < pixels; ++y) {
        auto* line = reinterpret_cast<QRgb*>(image.scanLine(y));
        for (int x = 0; x < pixels; ++x) {
            const QPointF centre((x + 0.5) / scale - whole / 2, (y + 0.5) / scale - whole / 2);
            const double alpha = strength * fade(distanceToOutline(centre, side, radius));
            line[x] = qRgba(0, 0, 0, int(std::lround(alpha * 255)));
        }
    }
    return QPixmap::fromImage(image);
}

/// The borders of the three parts that `length` from `start` is cut into: two ends and a middle.
std::array<int, 4> bounds(int start, int length, int end) {
    const int kept = std::min(end, length / 2);
    return {start, start + kept, start + length - kept, start + length};
}

QRect between(
    const std::array<int, 4>& columns, const std::array<int, 4>& rows, std::size_t column,
    std::size_t row) {
    return {
        QPoint(columns.at(column), rows.at(row)),
        QPoint(columns.at(column + 1) - 1, rows.at(row + 1) - 1)};
}

} // namespace

QMargins PanelShadow::margins() {
    return {blur, blur - offset, blur, blur + offset};
}

void PanelShadow::paint(QPainter& painter, const QRect& panel, int radius) {
    const qreal scale = painter.paintEngine()->paintDevice()->devicePixelRatioF();
    if (m_tile.isNull() || m_radius != radius || m_tile.devicePixelRatio() != scale) {
        m_tile = renderTile(radius, scale);
        m_radius = radius;
    }
    const QRect shadow = panel.translated(0, offset).adjusted(-blur, -blur, blur, blur);
    const int corner = blur + cornerInset(radius);
    const std::array<int, 4> columns = bounds(shadow.left(), shadow.width(), corner);
    const std::array<int, 4> rows = bounds(shadow.top(), shadow.height(), corner);
    const int tileCorner = int(std::lround(corner * scale));
    const std::array<int, 4> tile = bounds(0, m_tile.width(), tileCorner);
    for (std::size_t row = 0; row < 3; ++row) {
        for (std::size_t column = 0; column < 3; ++column) {
            if (row == 1 && column == 1)
                continue;
            painter.drawPixmap(
                between(columns, rows, column, row), m_tile, between(tile, tile, column, row));
        }
    }
}

} // namespace lumora

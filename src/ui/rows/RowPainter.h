#pragma once

#include "ui/rows/RowLayout.h"

#include <QPointF>

class QPainter;

namespace lumora {

/// Draws a laid-out row with its top leading corner at `origin`.
void paintRow(
    QPainter& painter, const QPointF& origin, const RowContent& content,
    const RowGeometry& geometry, const Theme& theme);

/// Draws a symbol into `square`, turned by `rotation` degrees clockwise about its centre.
void paintSymbol(
    QPainter& painter, const QRectF& square, const QString& name, const QColor& tint,
    double rotation = 0);

} // namespace lumora

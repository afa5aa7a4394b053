#pragma once

#include "ui/rows/RowLayout.h"

#include <QPointF>

class QPainter;

namespace lumora {

/// Draws a laid-out row with its top left corner at `origin`.
void paintRow(
    QPainter& painter, const QPointF& origin, const RowContent& content,
    const RowGeometry& geometry, const Theme& theme);

/// How a symbol is drawn.
struct SymbolStyle {
    QColor tint;
    QFont::Weight weight = QFont::Normal; ///< of its lines
    double rotation = 0;                  ///< degrees clockwise about its centre
};

/// Draws a symbol into `square`.
void paintSymbol(
    QPainter& painter, const QRectF& square, const QString& name, const SymbolStyle& style);

} // namespace lumora

#pragma once

#include "ui/rows/RowItem.h"
#include "ui/rows/TextDrawing.h"

#include <QRectF>
#include <QStringList>

#include <vector>

namespace lumora {

/// A line of text in a row.
struct PlacedLine {
    QPointF baseline; ///< where it begins, from the row's top left corner
    ShapedLine text;  ///< cut to its room

    bool operator==(const PlacedLine&) const = default;
};

/// Where a row's items stand, in device-independent pixels from the row's top left corner.
struct RowGeometry {
    std::vector<QRectF> items;     ///< one per item, in order
    std::vector<PlacedLine> lines; ///< of all items
    double baseline = 0;           ///< of the first text line
    double height = 0;
    Qt::LayoutDirection direction = Qt::LeftToRight; ///< in which the items follow each other

    bool operator==(const RowGeometry&) const = default;
};

/// Lays `content` out in `width` pixels: first what has a width of its own, then what shrinks or
/// is space shares the rest.
[[nodiscard]] RowGeometry layOutRow(
    const RowContent& content, const Theme& theme, double width,
    Qt::LayoutDirection direction = Qt::LeftToRight);

/// The texts that are cut off where `content` is laid out in `width` pixels.
[[nodiscard]] QStringList cutTexts(const RowContent& content, const Theme& theme, double width);

/// The size in pixels at which nothing in `content` has to give way.
[[nodiscard]] QSizeF naturalRowSize(const RowContent& content, const Theme& theme);

/// The edge of the square that a symbol beside text of `role` is drawn into, in pixels.
[[nodiscard]] double symbolEdge(TextRole role, const Theme& theme);

} // namespace lumora

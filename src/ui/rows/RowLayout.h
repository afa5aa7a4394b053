#pragma once

#include "ui/rows/RowItem.h"

#include <QRectF>

#include <vector>

namespace lumora {

/// Where a row's items stand, in points from the row's top leading corner.
struct RowGeometry {
    std::vector<QRectF> items; ///< one per item, in order
    double baseline = 0;       ///< of the first text line
    double height = 0;

    bool operator==(const RowGeometry&) const = default;
};

/// Lays `content` out in `width` points: first what has a width of its own, then what shrinks or
/// is space shares the rest.
[[nodiscard]] RowGeometry layOutRow(const RowContent& content, const Theme& theme, double width);

/// The width at which nothing in `content` has to give way.
[[nodiscard]] double naturalRowWidth(const RowContent& content, const Theme& theme);

/// The edge of a symbol that stands beside text of `role`, in points.
[[nodiscard]] double symbolEdge(TextRole role, const Theme& theme);

} // namespace lumora

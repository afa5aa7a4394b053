#pragma once

#include "ui/rows/RowItem.h"

class QPainter;

namespace lumora {

/// The width of `line` in pixels, all of it. Line breaks count as spaces, here and below.
[[nodiscard]] double textWidth(const TextLine& line, const Theme& theme);

/// How high a line of text stands, in pixels.
struct LineHeight {
    double ascent = 0; ///< from its top to its baseline
    double whole = 0;
};

/// The height of `line`, with what the fonts need that stand in for letters its own has not.
[[nodiscard]] LineHeight lineHeight(const TextLine& line, const Theme& theme);

/// Whether `line` does not fit into `width` pixels.
[[nodiscard]] bool isCut(const TextLine& line, const Theme& theme, double width);

/// `line` cut to `width` with "…" at its end, or as it is when it fits.
[[nodiscard]] TextLine elidedLine(const TextLine& line, const Theme& theme, double width);

/// Draws `line` from `baseline` on, in one go, with the strike in the text's own colour.
void drawText(QPainter& painter, const QPointF& baseline, const TextLine& line, const Theme& theme);

} // namespace lumora

#pragma once

#include "ui/rows/RowItem.h"

#include <QGlyphRun>
#include <QList>
#include <QRectF>

#include <optional>

class QPainter;

namespace lumora {

/// The family that the desktop draws pictures in texts with, such as a flame; empty where none has
/// any. Asks the toolkit's fonts, some milliseconds where there are hundreds.
[[nodiscard]] QString familyOfPictures();

/// `font`, which looks into `family` for what it has no glyph for before it asks for all families
/// that are installed: with hundreds, that takes longer than all else in a panel. The same when
/// `family` is empty.
[[nodiscard]] QFont withFamily(QFont font, const QString& family);

/// The width of `line` in pixels, all of it. Line breaks count as spaces, and of one that is far
/// beyond any row only the beginning, with "…" at its end, here and below.
[[nodiscard]] double textWidth(const TextLine& line, const Theme& theme);

/// How high a line of text stands, in pixels.
struct LineHeight {
    double ascent = 0; ///< from its top to its baseline
    double whole = 0;
};

/// The height of `line`, with what the fonts need that stand in for letters its own has not.
[[nodiscard]] LineHeight lineHeight(const TextLine& line, const Theme& theme);

/// Whether not all of `line` is shown in `width` pixels.
[[nodiscard]] bool isCut(const TextLine& line, const Theme& theme, double width);

/// `line` cut to `width` with "…" at its end, or as it is when it fits.
[[nodiscard]] TextLine elidedLine(const TextLine& line, const Theme& theme, double width);

/// A line as its fonts shape it. That takes most of the time of drawing it, so it is done once.
class ShapedLine {
public:
    /// Takes `line` as it is, however long.
    ShapedLine(const TextLine& line, const Theme& theme);

    /// Draws it from `baseline` on, in one go, with the strike in the text's own colour.
    void draw(QPainter& painter, const QPointF& baseline) const;

    bool operator==(const ShapedLine&) const = default;

private:
    QColor m_color;
    QList<QGlyphRun> m_glyphs;
    std::optional<QRectF> m_strike;
};

} // namespace lumora

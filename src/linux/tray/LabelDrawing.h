#pragma once

#include <QColor>
#include <QFont>
#include <QImage>
#include <QString>

namespace lumora {

/// `text` with `digit` in place of all its digits. As wide as the widest digit makes it, it does
/// not change while a minute passes, and the bar does not jump.
[[nodiscard]] QString withEveryDigit(QString text, QChar digit);

/// Draws `text`, a few characters, as large as a square with an edge of `pixels` device pixels
/// takes it: bold, and pressed together where it is wide. `font` gives the family.
[[nodiscard]] QImage
drawTextInSquare(const QString& text, int pixels, const QColor& color, const QFont& font);

/// Draws the symbol called `symbol` and `text` behind it, `height` device pixels high. Texts that
/// differ in digits only are equally wide.
[[nodiscard]] QImage drawSymbolAndText(
    const QString& symbol, const QString& text, int height, const QColor& color, const QFont& font);

} // namespace lumora

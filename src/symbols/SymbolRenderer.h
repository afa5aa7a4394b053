#pragma once

#include <QColor>
#include <QImage>
#include <QString>

namespace lumora {

/// Draws one of the program's symbols as a square image.
///
/// `name` is a symbol name such as "calendar"; an unknown name draws "calendar", so that there is
/// always something to see. `pixels` is the edge in device pixels, `tint` the one colour used,
/// `stroke` the thickness of lines beside the regular one.
QImage renderSymbol(const QString& name, int pixels, const QColor& tint, double stroke = 1);

} // namespace lumora

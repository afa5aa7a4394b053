#pragma once

#include <QMargins>

class QLayout;

namespace lumora {

class ThemeSource;

/// `margins` for things that follow each other in `direction`: the left one is the leading one.
[[nodiscard]] QMargins directed(const QMargins& margins, Qt::LayoutDirection direction);

/// Keeps the margins of `layout` and the distance between its items at so many points, whatever a
/// point is just now. The left margin is the leading one, by the program's direction. `themes` must
/// outlive the layout.
void keepSpaced(
    QLayout& layout, const ThemeSource& themes, const QMargins& margins, double spacing);

} // namespace lumora

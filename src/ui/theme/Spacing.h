#pragma once

#include <QMargins>

class QLayout;

namespace lumora {

class ThemeSource;

/// Keeps the margins of `layout` and the distance between its items at so many points, whatever a
/// point is just now. `themes` must outlive the layout.
void keepSpaced(
    QLayout& layout, const ThemeSource& themes, const QMargins& margins, double spacing);

} // namespace lumora

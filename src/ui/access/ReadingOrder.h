#pragma once

#include <QList>

class QWidget;

namespace lumora {

/// The parts of `widget`, not of its parts, in the order of its layout, which is the order in which
/// they are read. Rows come and go, so this is not the order in which they were made.
[[nodiscard]] QList<QWidget*> partsInReadingOrder(const QWidget& widget);

/// Whether `widget` is there for what is in it: it may have parts, now or later.
[[nodiscard]] bool hasParts(const QWidget& widget);

/// Everything below `root` that has no parts of its own, seen or not, in reading order.
[[nodiscard]] QList<QWidget*> leavesInReadingOrder(const QWidget& root);

/// Whether a widget without parts says nothing to those who cannot see it: it has no name and
/// nothing can be done with it.
[[nodiscard]] bool isDecoration(const QWidget& leaf);

} // namespace lumora

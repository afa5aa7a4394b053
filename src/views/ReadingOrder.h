#pragma once

#include <QList>

class QWidget;

namespace lumora {

/// What Tab stops at within `root`, in the order of its layouts, which is the order in which it is
/// read. Rows come and go, so this is not the order in which the widgets were made.
QList<QWidget*> tabStops(QWidget& root);

} // namespace lumora

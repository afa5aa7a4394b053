#pragma once

#include <QString>

namespace lumora {

/// What is said where no bar shows the program, in plain text.
struct NoStatusArea {
    QString title;
    QString body; ///< what is missing, and how to open the panel all the same
};

/// For the desktop that `desktop` names (as in XDG_CURRENT_DESKTOP).
[[nodiscard]] NoStatusArea noStatusArea(const QString& desktop);

} // namespace lumora

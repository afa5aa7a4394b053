#include "ui/theme/Motion.h"

#include "ui/theme/Theme.h"

#include <QApplication>
#include <QStyle>

namespace lumora {

bool motionAllowed(const Theme& theme) {
    // A style made for a desktop knows its wish as well. Qt's own "general effects" are about menus
    // sliding in, and off on every Linux desktop.
    return theme.allowsMotion() &&
           QApplication::style()->styleHint(QStyle::SH_Widget_Animation_Duration) > 0 &&
           !qEnvironmentVariableIsSet("LUMORA_STILL");
}

} // namespace lumora

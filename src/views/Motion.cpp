#include "views/Motion.h"

#include <QApplication>
#include <QStyle>

namespace lumora {

bool motionAllowed() {
    // The style knows the desktop's wish. Qt's own "general effects" are about menus sliding in,
    // and off on every Linux desktop.
    return QApplication::style()->styleHint(QStyle::SH_Widget_Animation_Duration) > 0 &&
           !qEnvironmentVariableIsSet("LUMORA_STILL");
}

} // namespace lumora

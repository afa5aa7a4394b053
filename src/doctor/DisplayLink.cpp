#include "doctor/Links.h"

using namespace Qt::Literals::StringLiterals;

namespace lumora {

Finding displayLink(const Evidence& evidence) {
    const QString link = u"display"_s;
    const bool hasX = evidence.environment.contains(u"DISPLAY"_s);
    const bool hasWayland = evidence.environment.contains(u"WAYLAND_DISPLAY"_s);
    const QString platform = evidence.environment.value(u"QT_QPA_PLATFORM"_s);
    const bool native = platform.startsWith("wayland"_L1) || (platform.isEmpty() && !hasX);
    if (!hasX && !hasWayland)
        return Finding::warning(
            link, u"There is none here"_s, u"Run this where Lumora is to be seen"_s);
    if (hasWayland && native)
        return Finding::warning(
            link, u"Wayland: the compositor places the panel"_s,
            u"Tell it where, by a rule for the window; docs/DESKTOPS.md has some"_s);
    if (hasWayland)
        return Finding::ok(link, u"Wayland, through XWayland: the panel asks for its place"_s);
    return Finding::ok(link, u"X11: the panel opens at the label"_s);
}

} // namespace lumora

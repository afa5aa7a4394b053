#include "doctor/Links.h"
#include "linux/appearance/PanelTone.h"
#include "platform/PreferenceKeys.h"

using namespace Qt::Literals::StringLiterals;

namespace lumora {

Finding barLink(const Evidence& evidence) {
    PanelEvidence panel;
    panel.wish = evidence.settings.value(PreferenceKeys::barTone.name);
    panel.desktop = evidence.environment.value(u"XDG_CURRENT_DESKTOP"_s);
    QString source = u"by what is usual on this desktop"_s;
    if (panel.wish == u"dark" || panel.wish == u"light") {
        source = u"by barTone in the preferences"_s;
    } else if (evidence.session && evidence.session->barThemeIsDark) {
        panel.themeIsDark = evidence.session->barThemeIsDark;
        source = u"by the bar's theme"_s;
    } else if (evidence.session && evidence.session->portal) {
        panel.portal = evidence.session->portal;
        source = u"by the desktop, or what it states of its colours"_s;
    }
    const bool isDark = toneFor(panel) == SymbolTone::Light;
    return Finding::ok(
        u"bar"_s, u"It is taken to be %1, %2"_s.arg(isDark ? u"dark"_s : u"light"_s, source));
}

} // namespace lumora

#include "linux/tray/LabelForm.h"

#include "platform/DesktopNames.h"

#include <algorithm>
#include <array>

using namespace Qt::Literals::StringLiterals;

namespace lumora {

namespace {

using Picture = LabelForm::Picture;

constexpr LabelForm textBeside{.picture = Picture::Symbol, .hasTextBeside = true};
constexpr LabelForm textBesideName{
    .picture = Picture::Symbol, .hasTextBeside = true, .isNamed = true};
constexpr LabelForm textDrawn{.picture = Picture::SymbolAndText, .hasTextBeside = false};
constexpr LabelForm textDrawnHigh{
    .picture = Picture::SymbolAndText, .hasTextBeside = false, .height = 24};
constexpr LabelForm shortText{.picture = Picture::ShortText, .hasTextBeside = false};
constexpr LabelForm symbolAlone{.picture = Picture::Symbol, .hasTextBeside = false};
/// For hosts that nobody has tried: nearly all of them draw squares and know of no text.
constexpr LabelForm shortTextAndBeside{.picture = Picture::ShortText, .hasTextBeside = true};

struct KnownHost {
    QLatin1StringView process; ///< as the kernel has it: its first fifteen characters
    LabelForm form;
};

constexpr std::array knownHosts{
    KnownHost{"gnome-shell"_L1, textBeside},
    KnownHost{"mate-panel"_L1, textBeside},
    KnownHost{"notification-ar"_L1, textBeside},
    KnownHost{"ayatana-indicat"_L1, textBesideName},
    KnownHost{"unity-panel-ser"_L1, textBeside},
    KnownHost{"waybar"_L1, textDrawn},
    KnownHost{"xapp-sn-watcher"_L1, textDrawnHigh},
    KnownHost{"kded5"_L1, shortText},
    KnownHost{"kded6"_L1, shortText},
    KnownHost{"plasmashell"_L1, shortText},
    KnownHost{"xfce4-panel"_L1, shortText},
    KnownHost{"wrapper-2.0"_L1, shortText},
    KnownHost{"lxqt-panel"_L1, shortText},
    KnownHost{"budgie-panel"_L1, shortText},
    KnownHost{"budgie-daemon"_L1, shortText},
};

/// The one tray of the old kind that lets its windows be wider than high.
constexpr auto wideTray = "trayer"_L1;

/// Where the process tells nothing, the desktop may.
LabelForm formOn(const QString& desktop) {
    const bool drawsText = namesDesktop(desktop, {"GNOME"_L1, "MATE"_L1, "Unity"_L1});
    return drawsText ? textBeside : shortTextAndBeside;
}

LabelForm observed(const HostEvidence& evidence) {
    if (evidence.isOldTray)
        return evidence.process == wideTray ? textDrawn : shortText;
    const auto* const known = std::ranges::find(knownHosts, evidence.process, &KnownHost::process);
    return known != knownHosts.end() ? known->form : formOn(evidence.desktop);
}

} // namespace

LabelForm labelFormFor(const HostEvidence& evidence) {
    LabelForm form = observed(evidence);
    const bool isNamed = form.isNamed;
    if (evidence.wish == u"symbol")
        form = symbolAlone;
    else if (evidence.wish == u"short")
        form = shortText;
    else if (evidence.wish == u"text" && form.picture == Picture::ShortText)
        form = textDrawn;
    form.isNamed = isNamed;
    return form;
}

} // namespace lumora

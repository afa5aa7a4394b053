#pragma once

#include <QString>

namespace lumora {

/// How a status area shows the label.
struct LabelForm {
    /// What is drawn into the item's pixels.
    enum class Picture {
        Symbol,
        ShortText,     ///< in the symbol's place; the symbol where there is no short text
        SymbolAndText, ///< side by side, as wide as they are
    };

    Picture picture = Picture::Symbol;
    bool hasTextBeside = true; ///< whether the text is handed over, to be drawn beside the picture

    /// Of the picture of both, in points. Hosts shrink and stretch what is not as high as their
    /// icons; this is what most have.
    int height = 22;

    /// Whether the symbol goes by the name of an icon of the desktop's, as nothing drawn is shown.
    bool isNamed = false;

    bool operator==(const LabelForm&) const = default;
};

/// What is known about the status area.
struct HostEvidence {
    QString process; ///< the program that keeps the items, e.g. "waybar"; empty: not known
    QString desktop; ///< as in XDG_CURRENT_DESKTOP
    QString wish;    ///< the user's: "text", "short" or "symbol"; anything else leaves it to us

    /// Whether it is a tray of the old kind, which takes windows and writes nothing beside them.
    bool isOldTray = false;
};

/// The form in which most of the label is seen there.
[[nodiscard]] LabelForm labelFormFor(const HostEvidence& evidence);

} // namespace lumora

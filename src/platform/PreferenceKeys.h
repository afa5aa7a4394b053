#pragma once

#include <QString>

namespace lumora {

/// The name of a preference, the type of its value, and the value until the user chooses another.
template <typename Value>
struct PreferenceKey {
    QString name;
    Value defaultValue;
};

/// Every preference that there is.
namespace PreferenceKeys {

/// The address of the briefing as the user typed it.
inline const PreferenceKey<QString> endpointURL{QStringLiteral("endpointURL"), {}};
/// Minutes between two refreshes.
inline const PreferenceKey<qint64> refreshMinutes{QStringLiteral("refreshMinutes"), 10};
/// The figure in the label without a meeting, see `MenuBarAmbient`.
inline const PreferenceKey<QString> menuBarAmbient{
    QStringLiteral("menuBarAmbient"), QStringLiteral("habits")};
/// Names of schemes whose links may be opened beside the usual ones, see `LinkPolicy`.
inline const PreferenceKey<QString> linkSchemes{QStringLiteral("linkSchemes"), {}};
/// How the status area shows the label: "auto", "text", "short" or "symbol".
inline const PreferenceKey<QString> label{QStringLiteral("label"), QStringLiteral("auto")};
/// How bright the bar is that the symbol sits on: "auto", "dark" or "light".
inline const PreferenceKey<QString> barTone{QStringLiteral("barTone"), QStringLiteral("auto")};
inline const PreferenceKey<bool> notifyBeforeMeetings{QStringLiteral("notifyBeforeMeetings"), true};
/// Whether the user was told that no bar shows the program.
inline const PreferenceKey<bool> toldOfNoStatusArea{QStringLiteral("toldOfNoStatusArea"), false};
/// Which sections of the panel are folded.
inline const PreferenceKey<bool> eventsCollapsed{QStringLiteral("section.collapsed.events"), false};
inline const PreferenceKey<bool> habitsCollapsed{QStringLiteral("section.collapsed.habits"), false};
inline const PreferenceKey<bool> choresCollapsed{QStringLiteral("section.collapsed.chores"), false};
inline const PreferenceKey<bool> spendingCollapsed{
    QStringLiteral("section.collapsed.spending"), false};

} // namespace PreferenceKeys

} // namespace lumora

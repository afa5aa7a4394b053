#pragma once

#include <QString>

#include <array>

namespace lumora {

/// The figure the label shows while no meeting takes it over.
enum class MenuBarAmbient { Habits, Focus, Chores, None };

/// Every choice, in the order they are offered.
inline constexpr std::array menuBarAmbientCases{
    MenuBarAmbient::Habits,
    MenuBarAmbient::Focus,
    MenuBarAmbient::Chores,
    MenuBarAmbient::None,
};

/// The text the choice is stored as: "habits", "focus", "chores" or "none".
QString rawValue(MenuBarAmbient ambient);

/// The choice stored as `raw`; habits for any other text.
MenuBarAmbient menuBarAmbientFromRaw(const QString& raw);

/// What the choice is called in the settings.
QString title(MenuBarAmbient ambient);

} // namespace lumora

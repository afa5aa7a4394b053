#pragma once

#include <QStringView>

#include <optional>

namespace lumora {

/// Whether the colour is darker than it is light.
[[nodiscard]] bool isDark(int red, int green, int blue);

/// Whether the background that `value` describes, in the language of the toolkit's style sheets, is
/// dark: a colour, several in a gradient, or one of the windows' own, which are dark if
/// `windowsAreDark`. Absent when it names no colour.
[[nodiscard]] std::optional<bool> isDarkBackground(QStringView value, bool windowsAreDark);

} // namespace lumora

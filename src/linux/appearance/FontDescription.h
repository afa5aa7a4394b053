#pragma once

#include "platform/DesktopAppearance.h"

namespace lumora {

/// Reads a font as GTK desktops write it: the family, words for its style, and the size in points,
/// as in "Noto Sans Semi-Bold Italic 10.5". Absent when there is no family or no size in points.
[[nodiscard]] std::optional<DesktopFont> parseFontDescription(const QString& description);

} // namespace lumora

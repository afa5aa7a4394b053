#pragma once

#include "platform/DesktopAppearance.h"

#include <QByteArray>
#include <QHash>

#include <cstdint>
#include <variant>

namespace lumora {

/// The settings that an X11 desktop shares with all programs, by name: numbers and texts.
using XSettings = QHash<QByteArray, std::variant<std::int32_t, QByteArray>>;

/// Reads the settings manager's property. What comes after a fault in it is left out.
XSettings parseXSettings(const QByteArray& property);

/// What those settings ask of a program's looks.
DesktopAppearance::Wishes wishesIn(const XSettings& settings);

} // namespace lumora

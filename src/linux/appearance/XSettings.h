#pragma once

#include "platform/DesktopAppearance.h"

#include <QByteArray>
#include <QHash>

#include <cstdint>

namespace lumora {

/// The settings that an X11 desktop shares with all programs, by name.
struct XSettings {
    QHash<QByteArray, std::int32_t> numbers;
    QHash<QByteArray, QByteArray> texts;

    bool operator==(const XSettings&) const = default;
};

/// Reads the settings manager's property. What comes after a fault in it is left out.
XSettings parseXSettings(const QByteArray& property);

/// What those settings ask of a program's looks.
DesktopAppearance::Wishes wishesIn(const XSettings& settings);

} // namespace lumora

#pragma once

#include "companion/settings/SettingsFault.h"

#include <QByteArrayView>

#include <optional>

namespace lumora::companion {

/// The first fault of a text that can be told better than the TOML library tells it: bytes that are
/// no text, and letters beyond ASCII without quotation marks. Absent where there is none; the
/// library finds all others.
[[nodiscard]] std::optional<SettingsFault> faultOfText(QByteArrayView toml);

} // namespace lumora::companion

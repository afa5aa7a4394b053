#pragma once

#include "companion/settings/SettingsFault.h"

#include <QByteArrayView>

#include <optional>

namespace lumora::companion {

/// The first fault of a text that the TOML library must not be given, because it takes the opposite
/// for granted: bytes that are no text, brackets without a name, and anything but ASCII outside of
/// texts and comments. Absent where there is none; the library finds all others.
[[nodiscard]] std::optional<SettingsFault> faultOfText(QByteArrayView toml);

} // namespace lumora::companion

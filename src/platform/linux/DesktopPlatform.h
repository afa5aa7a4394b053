#pragma once

#include "platform/PlatformFamily.h"

namespace lumora {

/// The user's desktop: their settings and their keyring.
PlatformFamily makeDesktopPlatform();

/// The same desktop with empty settings and an empty credential store, both in memory: nothing of
/// the user's is read or written.
PlatformFamily makeForgetfulPlatform();

} // namespace lumora

#pragma once

#include "platform/PlatformFamily.h"

namespace lumora {

/// The user's desktop: their settings, their keyring and their login items.
PlatformFamily makeDesktopPlatform();

/// The same desktop with empty settings, an empty credential store and no login items, all in
/// memory: nothing of the user's is read or written.
PlatformFamily makeForgetfulPlatform();

} // namespace lumora

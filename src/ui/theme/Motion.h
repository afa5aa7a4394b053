#pragma once

namespace lumora {

class Theme;

/// Whether things may move. Where the desktop asks for reduced motion, changes happen at once.
bool motionAllowed(const Theme& theme);

} // namespace lumora

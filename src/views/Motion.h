#pragma once

namespace lumora {

/// Whether the desktop lets things move. Where it asks for reduced motion, changes happen at once.
bool motionAllowed();

} // namespace lumora

#pragma once

#include "companion/server/HttpAnswer.h"

namespace lumora::companion {

/// The page for whoever opens the service's address in a browser: what this is and where it is set
/// up. The same for everybody; nothing of the user's stands in it.
[[nodiscard]] HttpAnswer greeting(bool headOnly);

} // namespace lumora::companion

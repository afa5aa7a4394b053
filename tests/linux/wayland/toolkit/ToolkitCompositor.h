#pragma once

#include "linux/wayland/compositor/FakeCompositor.h"

namespace lumora::tests {

/// The one that the application is a guest of.
[[nodiscard]] FakeCompositor& toolkitCompositor();

} // namespace lumora::tests

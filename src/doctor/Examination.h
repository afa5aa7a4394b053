#pragma once

#include "doctor/Evidence.h"

#include <chrono>

namespace lumora {

/// Looks at everything that the program works with, and changes nothing. Ends within `limit`
/// whatever hangs; the process must then end without waiting for its threads. Needs a
/// QCoreApplication.
[[nodiscard]] Evidence examine(std::chrono::milliseconds limit);

} // namespace lumora

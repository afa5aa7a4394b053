#pragma once

#include "texts/StatusLine.h"

namespace lumora {

/// Writes what the running program shows in `format`, and again whenever that line becomes another
/// one, until nobody reads it any more. While nothing runs the line is that of an empty label.
/// Returns the exit code. Needs a QCoreApplication.
int followStatus(StatusFormat format);

} // namespace lumora

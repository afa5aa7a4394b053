#pragma once

#include "texts/StatusReport.h"

namespace lumora::fuzz {

/// Expects every format's line of `report` to be one, and to hold no markup for its reader.
void expectStatusLines(const StatusReport& report);

} // namespace lumora::fuzz

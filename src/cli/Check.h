#pragma once

#include "cli/CommandLine.h"

namespace lumora {

/// Reads a briefing as the program does and prints what it would show of it, or where its first
/// fault is. Returns the exit code. Needs a QCoreApplication.
int checkBriefing(const CheckCommand& command);

} // namespace lumora

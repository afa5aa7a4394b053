#pragma once

#include "cli/CommandLine.h"
#include "linux/commands/CommandClient.h"

namespace lumora {

/// Carries out a command that the running program is asked for, says what came of it, and returns
/// the exit code. Needs a QCoreApplication.
int askRunningProgram(const Command& command);

/// Has the running program open its panel. Returns the exit code.
int openRunningProgram(CommandClient& client, const QByteArray& activationToken);

} // namespace lumora

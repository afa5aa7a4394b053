#pragma once

#include "cli/CommandLine.h"

namespace lumora {

/// Looks at everything between the service and the screen, and prints what is wrong with it.
/// Returns the exit code. Needs a QCoreApplication, and nothing may wait for its threads
/// afterwards.
int runDoctor(const DoctorCommand& command);

} // namespace lumora

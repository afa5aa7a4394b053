#pragma once

#include <QString>

namespace lumora {

/// Where the running program answers its own commands on the session bus. The methods there are
/// private to the program: others use the commands.
inline const QString commandService = QStringLiteral("com.lumora.app");
inline const QString commandPath = QStringLiteral("/com/lumora/app");
inline const QString commandInterface = QStringLiteral("com.lumora.app");

} // namespace lumora

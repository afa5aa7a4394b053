#pragma once

#include <QString>

namespace lumora {

/// Where the running program answers on the session bus. Other programs rely on the service name
/// alone.
inline const QString commandService = QStringLiteral("com.lumora.app");
inline const QString commandPath = QStringLiteral("/com/lumora/app");
inline const QString commandInterface = QStringLiteral("com.lumora.app");

} // namespace lumora

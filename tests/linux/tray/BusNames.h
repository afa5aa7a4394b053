#pragma once

#include <QString>

namespace lumora::tests {

/// Where hosts find the status item and its menu.
inline const QString itemPath = QStringLiteral("/StatusNotifierItem");
inline const QString itemInterface = QStringLiteral("org.kde.StatusNotifierItem");
inline const QString menuPath = QStringLiteral("/MenuBar");
inline const QString menuInterface = QStringLiteral("com.canonical.dbusmenu");

} // namespace lumora::tests

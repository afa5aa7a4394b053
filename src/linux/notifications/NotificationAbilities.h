#pragma once

#include <QString>
#include <QStringList>

namespace lumora {

/// A server of notifications, and what it can do.
struct NotificationAbilities {
    QString server;  ///< unique name on the bus
    QString program; ///< what it calls itself, e.g. "dunst"; empty when it has not said
    QStringList capabilities;
};

} // namespace lumora

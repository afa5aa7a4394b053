#pragma once

#include "platform/NotificationCenter.h"

#include <QVariantList>

namespace lumora {

/// The arguments of a `Notify` call of org.freedesktop.Notifications that shows `request` as well
/// as a server with these `capabilities` can. `replacesId` is the notification that it takes the
/// place of; 0: none.
QVariantList notifyArguments(
    const NotificationRequest& request, const QStringList& capabilities, uint replacesId);

} // namespace lumora

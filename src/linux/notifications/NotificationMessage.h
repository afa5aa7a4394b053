#pragma once

#include "linux/notifications/NotificationAbilities.h"
#include "platform/NotificationCenter.h"

#include <QVariantList>

namespace lumora {

/// The arguments of a `Notify` call of org.freedesktop.Notifications that shows `request` as well
/// as a server with these `abilities` can. `replacesId` is the notification that it takes the
/// place of; 0: none. It is to stay until it is of no use any more, counted from `now`, or until
/// the user turns to it.
QVariantList notifyArguments(
    const NotificationRequest& request, const NotificationAbilities& abilities, uint replacesId,
    Instant now);

} // namespace lumora

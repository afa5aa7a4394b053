#include "doctor/Links.h"

using namespace Qt::Literals::StringLiterals;

namespace lumora {

Finding notificationsLink(const Evidence& evidence) {
    const QString link = u"notifications"_s;
    if (!evidence.session || !evidence.session->hasNotifications)
        return Finding::warning(
            link, u"No notification server answers, so there are no reminders"_s,
            u"Start one, such as dunst or mako, where the desktop has none"_s);
    const QString name = evidence.session->notificationServer;
    if (!evidence.session->notifiesWithActions)
        return Finding::warning(
            link, name + u" knows no actions: reminders cannot be clicked"_s,
            u"Join by \"lumora join\", or use another notification server"_s);
    return Finding::ok(link, name + u", with actions"_s);
}

} // namespace lumora
